#include "platform/processes/CapturedStream.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace folvane {

void CapturedStream::read()
{
    constexpr qsizetype mostBytes = 64 << 20;
    std::array<char, 64 << 10> bytes;
    const ssize_t got = ::read(m_pipe.number(), bytes.data(), bytes.size());
    if (got > 0)
        m_bytes.append(bytes.data(), std::min<qsizetype>(got, mostBytes - m_bytes.size()));
    else if (got == 0 || errno != EINTR)
        m_pipe = OwnedDescriptor();
}

} // namespace folvane
