#include "platform/tasks/SerialWorker.h"

#include "support/await.h"

#include <QSemaphore>
#include <QThread>

#include <gmock/gmock.h>

#include <stdexcept>
#include <vector>

namespace folvane {

namespace {

using testing::ElementsAre;

struct OwnError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Keeps a worker busy until it is released.
class Holder {
public:
    explicit Holder(SerialWorker& worker)
        : m_task(worker.run([this] { m_begun.release(), m_gate.acquire(); }))
    {
        m_begun.acquire();
    }
    void release() { m_gate.release(); }
    void finish() { release(), await(std::move(m_task)); }

private:
    QSemaphore m_begun, m_gate;
    QCoro::Task<> m_task;
};

QCoro::Task<> note(SerialWorker& worker, std::vector<int>& log, int number)
{
    const auto noting = [&log, number] { log.push_back(number); };
    co_await worker.run(noting);
}

template <typename Error, typename Task>
void expectThrow(Task task)
{
    EXPECT_THROW(await(std::move(task)), Error);
}

} // namespace

TEST(SerialWorker, WorksInOrderOfArrival)
{
    SerialWorker worker("test");
    std::vector<int> log, wanted;
    std::vector<QCoro::Task<>> tasks;
    Holder holder(worker);
    for (int i = 0; i < 200; ++i) {
        tasks.push_back(note(worker, log, i));
        wanted.push_back(i);
    }
    holder.finish();
    for (QCoro::Task<>& task : tasks)
        await(std::move(task));
    EXPECT_EQ(log, wanted);
}

TEST(SerialWorker, ResumesOnTheCallersThread)
{
    SerialWorker worker("test");
    const auto ask = [](SerialWorker& on) -> QCoro::Task<QThread*> {
        const auto current = [] { return QThread::currentThread(); };
        QThread* worked = co_await on.run(current);
        EXPECT_NE(worked, QThread::currentThread());
        co_return QThread::currentThread();
    };
    EXPECT_EQ(await(ask(worker)), QThread::currentThread());
}

TEST(SerialWorker, KeepsItsThread)
{
    SerialWorker worker("test");
    const auto thread = [] { return QThread::currentThread(); };
    EXPECT_EQ(await(worker.run(thread)), await(worker.run(thread)));
}

TEST(SerialWorker, HasAStackForDeepRecursion)
{
    SerialWorker worker("test");
    struct Deep {
        static int dive(int depth) // about 100 MB at 1 KB a level
        {
            volatile char room[1024];
            room[0] = char(depth);
            return depth == 0 ? 0 : dive(depth - 1) + (room[0] == char(depth) ? 1 : 0);
        }
    };
    EXPECT_EQ(await(worker.run([] { return Deep::dive(50'000); })), 50'000);
}

TEST(SerialWorker, RethrowsWithTheOwnType)
{
    SerialWorker worker("test");
    expectThrow<OwnError>(worker.run([]() -> int { throw OwnError("x"); }));
    expectThrow<OwnError>(worker.run([] { throw OwnError("x"); }));
    expectThrow<int>(worker.run([] { throw 7; }));
    expectThrow<Cancelled>(worker.run([] { throw Cancelled(); }));
    EXPECT_EQ(await(worker.run([] { return 3; })), 3);
}

TEST(SerialWorker, TakesAndGivesWhatOnlyMoves)
{
    SerialWorker worker("test");
    auto value = std::make_unique<int>(5);
    const auto back = await(worker.run([value = std::move(value)]() mutable { return std::move(value); }));
    EXPECT_EQ(*back, 5);
}

TEST(SerialWorker, DoesNotBeginWhatWasStoppedBefore)
{
    SerialWorker worker("test");
    std::stop_source stop;
    stop.request_stop();
    bool began = false;
    expectThrow<Cancelled>(worker.run([&] { began = true; }, stop.get_token()));
    await(worker.run([] {}));
    EXPECT_FALSE(began);
}

TEST(SerialWorker, EndsAStoppedRequestWhileAnotherRuns)
{
    SerialWorker worker("test");
    Holder holder(worker);
    std::stop_source stop;
    bool began = false;
    QCoro::Task<> queued = worker.run([&] { began = true; }, stop.get_token());
    stop.request_stop();
    expectThrow<Cancelled>(std::move(queued)); // the holder is still at work
    holder.finish();
    await(worker.run([] {}));
    EXPECT_FALSE(began);
}

TEST(SerialWorker, LetsARunningJobSeeTheStop)
{
    SerialWorker worker("test");
    std::stop_source stop;
    QSemaphore begun;
    const auto job = [&begun, token = stop.get_token()] {
        begun.release();
        while (!token.stop_requested())
            QThread::yieldCurrentThread();
        throwIfStopped(token);
    };
    QCoro::Task<> task = worker.run(job, stop.get_token());
    begun.acquire();
    stop.request_stop();
    expectThrow<Cancelled>(std::move(task));
}

TEST(SerialWorker, IgnoresAStopAfterTheEnd)
{
    SerialWorker worker("test");
    std::stop_source stop;
    EXPECT_EQ(await(worker.run([] { return 1; }, stop.get_token())), 1);
    stop.request_stop();
    EXPECT_EQ(await(worker.run([] { return 2; })), 2);
}

TEST(SerialWorker, EndsQueuedRequestsWithCancelledWhenItGoes)
{
    auto worker = std::make_unique<SerialWorker>("test");
    QSemaphore begun, gate;
    QCoro::Task<int> running = worker->run([&] { return begun.release(), gate.acquire(), 1; });
    begun.acquire();
    bool began = false;
    QCoro::Task<> queued = worker->run([&] { began = true; });
    const std::unique_ptr<QThread> destroyer(QThread::create([&] { worker.reset(); }));
    destroyer->start();
    gate.release(); // whether the destructor has begun or not, it waits for the running job
    EXPECT_EQ(await(std::move(running)), 1);
    destroyer->wait();
    if (!began)
        expectThrow<Cancelled>(std::move(queued));
}

TEST(SerialWorker, GoesWhileItsJobsWaitInLine)
{
    std::vector<QCoro::Task<>> tasks;
    int began = 0;
    {
        SerialWorker worker("test");
        tasks.push_back(worker.run([&] { ++began, QThread::msleep(0); }));
        for (int i = 0; i < 1000; ++i)
            tasks.push_back(worker.run([&] { ++began; }));
    }
    const int atEnd = began;
    int cancelled = 0;
    for (QCoro::Task<>& task : tasks) {
        try {
            await(std::move(task));
        } catch (const Cancelled&) {
            ++cancelled;
        }
    }
    EXPECT_EQ(began, atEnd); // nothing ran after the destructor
    EXPECT_EQ(began + cancelled, 1001);
}

} // namespace folvane
