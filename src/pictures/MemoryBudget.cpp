#include "pictures/MemoryBudget.h"

#include "platform/tasks/Cancelled.h"

namespace folvane {

MemoryBudget::Lease MemoryBudget::tryTake(qint64 bytes)
{
    {
        const std::lock_guard lock(m_mutex);
        if (bytes > m_free)
            return nullptr;
        m_free -= bytes;
    }
    return leaseOf(bytes);
}

MemoryBudget::Lease MemoryBudget::take(qint64 bytes, const std::stop_token& stop)
{
    {
        std::unique_lock lock(m_mutex);
        m_returned.wait(lock, stop, [&] { return bytes <= m_free; });
        throwIfStopped(stop);
        m_free -= bytes;
    }
    return leaseOf(bytes);
}

MemoryBudget::Lease MemoryBudget::leaseOf(qint64 bytes)
{
    return Lease(this, [bytes](MemoryBudget* budget) { budget->giveBack(bytes); });
}

void MemoryBudget::giveBack(qint64 bytes)
{
    const std::lock_guard lock(m_mutex);
    m_free += bytes;
    m_returned.notify_all();
}

MemoryBudget& decodingBudget()
{
    static MemoryBudget budget(qint64(512) << 20);
    return budget;
}

} // namespace folvane
