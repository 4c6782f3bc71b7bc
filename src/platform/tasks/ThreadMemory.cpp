#include "platform/tasks/ThreadMemory.h"

#include <cstddef>

// Of jemalloc (see cmake/allocator.cmake).
extern "C" __attribute__((weak)) int mallctl(const char* name, void* old, size_t* oldSize, void* to,
                                             size_t toSize);

namespace folvane {

ThreadMemory::ThreadMemory()
{
    size_t size = sizeof m_allocated;
    if (!mallctl || mallctl("thread.allocatedp", &m_allocated, &size, nullptr, 0) != 0
        || mallctl("thread.deallocatedp", &m_freed, &size, nullptr, 0) != 0)
        m_allocated = nullptr;
    m_heldAtStart = held();
}

} // namespace folvane
