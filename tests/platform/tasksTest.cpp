// Tasks that nobody awaits, the background queue, and clocks.

#include "platform/tasks/Cancelled.h"
#include "platform/tasks/background.h"
#include "platform/tasks/spawn.h"

#include "support/ManualClock.h"
#include "support/await.h"

#include <QSemaphore>

#include <gtest/gtest.h>

#include <stdexcept>

namespace folvane {

namespace {

using namespace std::chrono_literals;

QCoro::Task<> failing(Clock& clock, std::exception_ptr error)
{
    co_await clock.sleep(1ms, {});
    std::rethrow_exception(error);
}

/// What the reporter hears of a spawned task that fails, after it was suspended and at once.
std::vector<std::exception_ptr> heardOf(std::exception_ptr error)
{
    std::vector<std::exception_ptr> heard;
    const SpawnReporter before = setSpawnReporter([&](std::exception_ptr what) { heard.push_back(what); });
    ManualClock clock;
    spawn(failing(clock, error));
    clock.advance(1ms);
    QCoreApplication::processEvents();
    spawn([](std::exception_ptr what) -> QCoro::Task<> {
        co_await std::suspend_never(), std::rethrow_exception(what);
    }(error));
    setSpawnReporter(before);
    return heard;
}

} // namespace

TEST(Spawn, ReportsEveryFailure)
{
    const auto error = std::make_exception_ptr(std::runtime_error("lost"));
    EXPECT_EQ(heardOf(error), std::vector({error, error}));
    const auto odd = std::make_exception_ptr(7);
    EXPECT_EQ(heardOf(odd), std::vector({odd, odd}));
}

TEST(Spawn, DropsCancelled)
{
    EXPECT_TRUE(heardOf(std::make_exception_ptr(Cancelled())).empty());
}

TEST(Background, JobsDoNotWaitForEachOther)
{
    QSemaphore meeting;
    QCoro::Task<> waiting = inBackground([&] { meeting.acquire(); });
    await(inBackground([&] { meeting.release(); }));
    await(std::move(waiting));
}

TEST(Clock, SleepsUntilTheTimeHasPassed)
{
    ManualClock clock;
    bool woke = false;
    spawn([](Clock& on, bool& flag) -> QCoro::Task<> {
        co_await on.sleep(6s, {});
        flag = true;
    }(clock, woke));
    clock.advance(5999ms);
    QCoreApplication::processEvents();
    EXPECT_FALSE(woke);
    clock.advance(1ms);
    QCoreApplication::processEvents();
    EXPECT_TRUE(woke);
}

TEST(Clock, AStopEndsTheSleep)
{
    ManualClock manual;
    SystemClock system;
    for (Clock* clock : {static_cast<Clock*>(&manual), static_cast<Clock*>(&system)}) {
        std::stop_source stop;
        QCoro::Task<> sleep = clock->sleep(24h, stop.get_token());
        stop.request_stop();
        await(std::move(sleep));
        await(clock->sleep(24h, stop.get_token())); // stopped before it began
    }
}

TEST(Clock, TheSystemsClockWakesUp)
{
    SystemClock clock;
    const auto start = clock.now();
    await(clock.sleep(2ms, {}));
    EXPECT_GE(clock.now() - start, 1ms);
}

} // namespace folvane
