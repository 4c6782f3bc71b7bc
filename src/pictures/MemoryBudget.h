#pragma once

#include <QtGlobal>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <stop_token>

namespace folvane {

/// An amount of memory that many share: who is about to take some of it asks first. For any number of threads; must
/// outlive what it lends.
class MemoryBudget {
public:
    /// Gives back what it stands for when the last copy goes. Null when there was not that much.
    using Lease = std::shared_ptr<const void>;

    explicit MemoryBudget(qint64 bytes) : m_all(bytes), m_free(bytes) {}
    Q_DISABLE_COPY_MOVE(MemoryBudget)

    qint64 all() const { return m_all; }
    Lease tryTake(qint64 bytes);
    /// Waits until that much is free, for ever if that cannot be. Throws Cancelled.
    Lease take(qint64 bytes, const std::stop_token& stop);

private:
    Lease leaseOf(qint64 bytes);
    void giveBack(qint64 bytes);

    const qint64 m_all;
    std::mutex m_mutex;
    std::condition_variable_any m_returned;
    qint64 m_free;
};

/// For decoding images of documents, on all cores together: 512 MB.
MemoryBudget& decodingBudget();

} // namespace folvane
