#pragma once

#include <QObject>
#include <QScopeGuard>

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
    void pause() { m_measures = false; }
    /// Until what it gives ends, what the thread does does not count.
    [[nodiscard]] auto lookAway()
    {
        pause();
        return qScopeGuard([this] { resume(); });
    }
    std::chrono::duration<double, std::milli> longest() const { return m_longest; }

private:
    void resume();
    void beat(const std::stop_token& stop);
    void handle(std::chrono::steady_clock::time_point posted);

    std::atomic<bool> m_measures = false;
    std::atomic<bool> m_underWay = false;
    std::chrono::steady_clock::time_point m_since; ///< a heartbeat may have waited longer
    std::chrono::duration<double, std::milli> m_longest{0};
    std::jthread m_thread; // last, so that it ends before what it touches goes
};

} // namespace folvane
