#include "pdf/drawing/DrawingBudget.h"

#include <ctime>
#include <utility>

namespace folvane::pdf {

namespace {

constexpr std::chrono::milliseconds grace(100);
constexpr qint64 memoryOfAnyDrawing = 448 << 20; // bytes

std::chrono::nanoseconds timeOfThread()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

DrawingBudget::DrawingBudget(Time time, std::stop_token stop, Waiting waiting)
    : m_time(time),
      m_memory(memoryOfAnyDrawing),
      m_stop(std::move(stop)),
      m_waiting(std::move(waiting)),
      m_nextLook(m_start + time),
      m_timeAtStart(timeOfThread())
{
}

bool DrawingBudget::isOver()
{
    if (m_end != End::NotYet)
        return true;
    const Clock::time_point now = Clock::now();
    if (m_stop.stop_requested())
        finish(End::Stopped);
    else if (m_threadMemory.taken() > m_memory)
        finish(End::TooLarge);
    else if (m_waiting && *m_waiting > 0 && now - m_start > ofCourtesy)
        finish(End::MakesRoom);
    else if (now >= m_nextLook) {
        // The thread's clock is slow to read, and never runs faster than the wall's.
        const std::chrono::nanoseconds left = m_time - (timeOfThread() - m_timeAtStart);
        m_nextLook = now + left;
        if (left <= left.zero())
            finish(End::TimeIsUp);
    }
    return m_end != End::NotYet;
}

void DrawingBudget::endAsTooLarge()
{
    if (m_end == End::NotYet)
        finish(End::TooLarge);
}

bool DrawingBudget::isOverdue()
{
    return isOver() && (m_end == End::TooLarge || Clock::now() - m_endedAt > grace);
}

void DrawingBudget::finish(End end)
{
    m_end = end;
    m_endedAt = Clock::now();
}

} // namespace folvane::pdf
