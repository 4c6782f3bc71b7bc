#pragma once

#include <QObject>

#include <atomic>
#include <chrono>
#include <thread>

namespace folvane {

/// Measures how long the interface thread keeps events waiting: another thread posts a heartbeat every two
/// milliseconds, and the time until it is handled is a gap.
class Watchdog : public QObject {
    Q_OBJECT

public:
    Watchdog();

    /// Forgets what was measured, and measures from now on.
    void start();
    /// What the thread does meanwhile does not count.
    void pause();
    void resume();
    std::chrono::duration<double, std::milli> longest() const { return m_longest; }

private:
    void beat(const std::stop_token& stop);
    void handle(int round, std::chrono::steady_clock::time_point posted);

    std::atomic<int> m_round = 0; ///< a heartbeat of an earlier round does not count
    std::atomic<bool> m_measures = false;
    std::atomic<bool> m_underWay = false;
    std::chrono::duration<double, std::milli> m_longest{0};
    std::jthread m_thread; // last, so that it ends before what it touches goes
};

/// Pauses the watchdog while it lives.
class Unwatched {
public:
    explicit Unwatched(Watchdog& watchdog) : m_watchdog(watchdog) { m_watchdog.pause(); }
    ~Unwatched() { m_watchdog.resume(); }
    Q_DISABLE_COPY_MOVE(Unwatched)

private:
    Watchdog& m_watchdog;
};

} // namespace folvane
