#pragma once

#include "platform/tasks/ThreadMemory.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <stop_token>

namespace folvane::pdf {

/// How long one drawing may go on, and how much memory it may take. Made by the thread that draws, and asked by it alone.
class DrawingBudget {
public:
    using Time = std::chrono::milliseconds;
    /// Jobs that wait for this drawing to end.
    using Waiting = std::shared_ptr<const std::atomic<int>>;

    static constexpr Time ofPicture{30'000};
    static constexpr Time ofThumbnail{5'000};
    static constexpr Time ofOpening{60'000};
    /// Of a drawing that others wait for.
    static constexpr Time ofCourtesy{2'000};

    enum class End {
        NotYet,
        Stopped,
        MakesRoom, ///< for those who wait: to be drawn again after them
        TimeIsUp,
        TooLarge, ///< would take too much memory
    };

    /// `time` is the thread's own, which does not pass while other programs have the processor.
    DrawingBudget(Time time, std::stop_token stop, Waiting waiting = {});

    Time time() const { return m_time; }
    const std::stop_token& stop() const { return m_stop; }
    /// Cheap enough for each step of a drawing. What is over stays over.
    bool isOver();
    /// What is drawn needs so many bytes more than what there is for any drawing.
    void allowMemory(qint64 bytes) { m_memory += bytes; }
    void endAsTooLarge();
    End end() const { return m_end; }
    /// What is drawn cannot be drawn within such a budget, however often it is tried.
    bool isHopeless() const { return m_end == End::TimeIsUp || m_end == End::TooLarge; }
    /// It has been over for so long that a drawing which still goes on does not ask.
    bool isOverdue();

private:
    using Clock = std::chrono::steady_clock;

    void finish(End end);

    Time m_time;
    qint64 m_memory; ///< bytes
    ThreadMemory m_threadMemory;
    std::stop_token m_stop;
    Waiting m_waiting;
    Clock::time_point m_start = Clock::now();
    Clock::time_point m_nextLook;
    std::chrono::nanoseconds m_timeAtStart;
    End m_end = End::NotYet;
    Clock::time_point m_endedAt;
};

} // namespace folvane::pdf
