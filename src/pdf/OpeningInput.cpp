#include "pdf/OpeningInput.h"

#include <stdexcept>

#include <time.h>

namespace folvane::pdf {

namespace {

constexpr double mostSeconds = 10;
constexpr unsigned readsBetweenLooks = 1024; // most take a byte from a buffer

double secondsOfThisThread()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

} // namespace

OpeningInput::OpeningInput(std::shared_ptr<const SourceFile> file, std::stop_token stop)
    : FileInput(std::move(file)), m_stop(std::move(stop)), m_begin(secondsOfThisThread())
{
}

size_t OpeningInput::read(char* buffer, size_t length)
{
    if (m_isOpening && ++m_reads % readsBetweenLooks == 0 && mustEnd())
        throw std::runtime_error("the search of this file is given up");
    return FileInput::read(buffer, length);
}

bool OpeningInput::mustEnd() const
{
    return m_stop.stop_requested() || secondsOfThisThread() - m_begin > mostSeconds;
}

} // namespace folvane::pdf
