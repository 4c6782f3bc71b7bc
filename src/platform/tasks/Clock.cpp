#include "platform/tasks/Clock.h"

#include <QCoro/QCoroFuture>

#include <QPromise>
#include <QTimer>

#include <memory>

namespace folvane {

Clock::~Clock() = default;

std::chrono::steady_clock::time_point SystemClock::now() const
{
    return std::chrono::steady_clock::now();
}

QDateTime SystemClock::date() const
{
    return QDateTime::currentDateTimeUtc();
}

QCoro::Task<> SystemClock::sleep(std::chrono::milliseconds time, std::stop_token stop)
{
    const auto woken = std::make_shared<QPromise<void>>(); // finishing twice does nothing more
    woken->start();
    QTimer timer;
    timer.setSingleShot(true);
    timer.callOnTimeout([woken] { woken->finish(); });
    timer.start(time);
    const std::stop_callback onStop(stop, [woken] { woken->finish(); });
    const QFuture<void> end = woken->future();
    co_await end;
}

} // namespace folvane
