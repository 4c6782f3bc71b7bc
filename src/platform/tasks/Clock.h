#pragma once

#include <QCoro/QCoroTask>

#include <QDateTime>

#include <chrono>
#include <stop_token>

namespace folvane {

/// Time, so that tests can let it pass themselves.
class Clock {
public:
    virtual ~Clock();

    virtual std::chrono::steady_clock::time_point now() const = 0;
    /// By the calendar.
    virtual QDateTime date() const = 0;
    /// Ends after the time, or early when stop is requested; the caller looks at the token. Never throws.
    virtual QCoro::Task<> sleep(std::chrono::milliseconds time, std::stop_token stop) = 0;
};

/// The real one. sleep() needs the calling thread's event loop.
class SystemClock final : public Clock {
public:
    std::chrono::steady_clock::time_point now() const override;
    QDateTime date() const override;
    QCoro::Task<> sleep(std::chrono::milliseconds time, std::stop_token stop) override;
};

} // namespace folvane
