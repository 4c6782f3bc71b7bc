#include "platform/tasks/SerialWorker.h"

#include "support/await.h"

#include <QSemaphore>
#include <QThread>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <vector>

namespace folvane {

namespace {

class Worker : public testing::Test {
protected:
    template <typename Error, typename Task>
    void expectThrow(Task task)
    {
        EXPECT_THROW(await(std::move(task)), Error);
        EXPECT_EQ(await(worker->run([] { return 3; })), 3) << "goes on";
    }

    /// Keeps the worker busy until the gate is opened.
    QCoro::Task<> hold()
    {
        QCoro::Task<> task = worker->run([this] { begun.release(), gate.acquire(); });
        begun.acquire();
        return task;
    }

    QSemaphore begun, gate;
    std::unique_ptr<SerialWorker> worker = std::make_unique<SerialWorker>("test");
    std::stop_source stop;
};

} // namespace

TEST_F(Worker, WorksInOrderOfArrival)
{
    std::vector<int> log;
    std::vector<QCoro::Task<>> tasks;
    QCoro::Task<> held = hold();
    for (int i = 0; i < 200; ++i)
        tasks.push_back(worker->run([&log, i] { log.push_back(i); }));
    gate.release();
    for (QCoro::Task<>& task : tasks)
        await(std::move(task));
    EXPECT_TRUE(log.size() == 200 && std::ranges::is_sorted(log));
}

TEST_F(Worker, HasOneThreadAndResumesOnTheCallers)
{
    const auto ask = [](SerialWorker& on) -> QCoro::Task<std::pair<QThread*, QThread*>> {
        const auto current = [] { return QThread::currentThread(); };
        QThread* worked = co_await on.run(current);
        co_return std::pair(worked, QThread::currentThread());
    };
    const auto [worked, resumed] = await(ask(*worker));
    EXPECT_NE(worked, resumed);
    EXPECT_EQ(resumed, QThread::currentThread());
    EXPECT_EQ(await(ask(*worker)).first, worked);
}

TEST_F(Worker, HasAStackForDeepRecursion)
{
    const std::function<int(int)> dive = [&dive](int depth) { // about 100 MB
        volatile char room[2000] = {};
        return depth == 0 ? 0 : dive(depth - 1) + 1 + room[depth % 2000];
    };
    EXPECT_EQ(await(worker->run([&] { return dive(50'000); })), 50'000);
}

TEST_F(Worker, RethrowsWithTheOwnType)
{
    expectThrow<std::domain_error>(worker->run([]() -> int { throw std::domain_error("x"); }));
    expectThrow<std::domain_error>(worker->run([] { throw std::domain_error("x"); }));
    expectThrow<int>(worker->run([] { throw 7; }));
}

TEST_F(Worker, DoesNotBeginWhatWasStopped)
{
    bool began = false;
    QCoro::Task<> held = hold();
    QCoro::Task<> queued = worker->run([&] { began = true; }, stop.get_token());
    stop.request_stop();
    EXPECT_THROW(await(std::move(queued)), Cancelled); // the other is still at work
    gate.release();
    expectThrow<Cancelled>(worker->run([&] { began = true; }, stop.get_token()));
    EXPECT_FALSE(began);
}

TEST_F(Worker, EndsQueuedRequestsWithCancelledWhenItGoes)
{
    std::vector<QCoro::Task<>> tasks;
    int count = 0, cancelled = 0;
    QCoro::Task<> held = hold();
    for (int i = 0; i < 1000; ++i)
        tasks.push_back(worker->run([&] { ++count; }));
    const std::unique_ptr<QThread> destroyer(QThread::create([this] { worker.reset(); }));
    destroyer->start();
    gate.release(); // whether the destructor has begun or not, it waits for the running job
    destroyer->wait();
    for (QCoro::Task<>& task : tasks) {
        try {
            await(std::move(task));
        } catch (const Cancelled&) {
            ++cancelled;
        }
    }
    EXPECT_EQ(count + cancelled, 1000);
}

} // namespace folvane
