#pragma once

#include "platform/tasks/Clock.h"

#include <QCoro/QCoroFuture>

#include <QPromise>

#include <memory>
#include <vector>

namespace folvane {

/// A clock that stands still until the test lets time pass. For the thread that made it.
class ManualClock final : public Clock {
public:
    std::chrono::steady_clock::time_point now() const override { return m_now; }
    QDateTime date() const override
    {
        const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(m_now.time_since_epoch());
        return QDateTime(QDate(2026, 11, 23), QTime(12, 0), Qt::UTC).addMSecs(passed.count());
    }

    QCoro::Task<> sleep(std::chrono::milliseconds time, std::stop_token stop) override
    {
        const auto woken = std::make_shared<QPromise<void>>();
        woken->start();
        if (time.count() <= 0)
            woken->finish();
        m_sleepers.push_back({m_now + time, woken});
        const std::stop_callback onStop(stop, [woken] { woken->finish(); });
        const QFuture<void> end = woken->future();
        co_await end;
    }

    /// Lets time pass. Who wakes up goes on when the event loop runs next.
    void advance(std::chrono::milliseconds time)
    {
        m_now += time;
        for (const Sleeper& sleeper : m_sleepers)
            if (sleeper.until <= m_now)
                sleeper.woken->finish();
        std::erase_if(m_sleepers, [this](const Sleeper& sleeper) { return sleeper.until <= m_now; });
    }

private:
    struct Sleeper {
        std::chrono::steady_clock::time_point until;
        std::shared_ptr<QPromise<void>> woken;
    };

    std::chrono::steady_clock::time_point m_now;
    std::vector<Sleeper> m_sleepers;
};

} // namespace folvane
