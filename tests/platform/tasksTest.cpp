// Tasks that nobody awaits, the background queue, clocks, and what the allocator is told.

#include "platform/tasks/Cancelled.h"
#include "platform/tasks/background.h"
#include "platform/tasks/spawn.h"

#include "support/ManualClock.h"
#include "support/await.h"

#include <QSemaphore>

#include <gtest/gtest.h>

#include <stdexcept>

extern "C" __attribute__((weak)) int mallctl(const char*, void*, size_t*, void*, size_t);

namespace folvane {

namespace {

using namespace std::chrono_literals;

QCoro::Task<> failing(Clock& clock, std::chrono::milliseconds after, std::exception_ptr error)
{
    co_await clock.sleep(after, {});
    std::rethrow_exception(error);
}

/// What the reporter hears of a spawned task that fails, at once and after it was suspended.
std::vector<std::exception_ptr> heardOf(std::exception_ptr error)
{
    std::vector<std::exception_ptr> heard;
    const SpawnReporter before = setSpawnReporter([&](std::exception_ptr what) { heard.push_back(what); });
    ManualClock clock;
    spawn(failing(clock, 0ms, error));
    spawn(failing(clock, 1ms, error));
    clock.advance(1ms);
    QCoreApplication::processEvents();
    setSpawnReporter(before);
    return heard;
}

} // namespace

TEST(Spawn, ReportsEveryFailureButCancelled)
{
    const auto error = std::make_exception_ptr(std::runtime_error("lost")), odd = std::make_exception_ptr(7);
    EXPECT_EQ(heardOf(error), std::vector({error, error}));
    EXPECT_EQ(heardOf(odd), std::vector({odd, odd}));
    EXPECT_TRUE(heardOf(std::make_exception_ptr(Cancelled())).empty());
}

TEST(Background, JobsDoNotWaitForEachOther)
{
    QSemaphore meeting;
    QCoro::Task<> waiting = inBackground([&] { meeting.acquire(); });
    await(inBackground([&] { meeting.release(); }));
    await(std::move(waiting));
}

TEST(SystemClock, SleepsUntilTheTimeHasPassedOrAStop)
{
    SystemClock clock;
    const auto start = clock.now();
    await(clock.sleep(2ms, {}));
    EXPECT_GE(clock.now() - start, 1ms);
    std::stop_source stop;
    QCoro::Task<> sleep = clock.sleep(24h, stop.get_token());
    stop.request_stop();
    await(std::move(sleep));
    await(clock.sleep(24h, stop.get_token())); // stopped before it began
}

TEST(Allocator, GivesBackWhatNobodyTakes)
{
    if (!mallctl)
        GTEST_SKIP() << "The sanitizers bring another one.";
    ssize_t milliseconds = 0;
    size_t size = sizeof milliseconds;
    ASSERT_EQ(mallctl("opt.dirty_decay_ms", &milliseconds, &size, nullptr, 0), 0);
    EXPECT_EQ(milliseconds, 1000);
}

} // namespace folvane
