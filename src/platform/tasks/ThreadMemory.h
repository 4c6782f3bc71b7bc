#pragma once

#include <QtGlobal>

#include <cstdint>

namespace folvane {

/// How much memory the thread that made this has taken since then and not given back. Cheap to ask, on that thread.
/// Always nothing where the allocator does not count, as under the sanitizers.
class ThreadMemory {
public:
    ThreadMemory();

    qint64 taken() const { return held() - m_heldAtStart; }

private:
    qint64 held() const { return m_allocated ? static_cast<qint64>(*m_allocated - *m_freed) : 0; }

    const uint64_t* m_allocated = nullptr; ///< the allocator's counters of this thread, in bytes
    const uint64_t* m_freed = nullptr;
    qint64 m_heldAtStart = 0;
};

} // namespace folvane
