#include "engine/PDFEngine.h"

#include "engine/BookFixture.h"
#include "engine/EngineTest.h"
#include "platform/tasks/Cancelled.h"
#include "support/await.h"

#include <numeric>
#include <vector>

namespace folvane {

namespace {

QCoro::Task<> note(QCoro::Task<QSizeF> request, std::vector<int>& order, int number)
{
    co_await std::move(request);
    order.push_back(number);
}

QCoro::Task<> all(std::vector<QCoro::Task<>>& tasks)
{
    for (QCoro::Task<>& task : tasks)
        co_await std::move(task);
}

} // namespace

class PDFEngineTest : public EngineTest {
protected:
    PDFEngine worker;
};

TEST_F(PDFEngineTest, AnswersInOrderOfArrival)
{
    const QUrl source = write("a.pdf", book("A"));
    EXPECT_EQ(await(worker.open(source)), OpenResult::opened(3));
    std::vector<int> order;
    std::vector<QCoro::Task<>> tasks;
    for (int i = 0; i < 20; ++i)
        tasks.push_back(note(worker.displaySize({source, i % 3}, 0), order, i));
    await(all(tasks));
    std::vector<int> expected(20);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(order, expected);
}

TEST_F(PDFEngineTest, AStoppedBuildIsCancelled)
{
    const QUrl source = write("a.pdf", book("A"));
    await(worker.open(source));
    std::stop_source stop;
    BuildPlan plan;
    add(plan, source, {0, 1, 2});
    stop.request_stop();
    EXPECT_THROW(await(worker.build(plan, stop.get_token())), Cancelled);
    EXPECT_THROW(engine.open(source); engine.build(plan, stop.get_token()), Cancelled)
        << "also at the engine's own checks";
    EXPECT_THROW(await(worker.pictures(plan, 72, true, stop.get_token())), Cancelled);
}

TEST_F(PDFEngineTest, ErrorsKeepTheirTypeAcrossTheThread)
{
    BuildPlan plan;
    add(plan, QUrl::fromLocalFile("/nowhere.pdf"), {0});
    EXPECT_THROW(await(worker.build(plan, {})), EngineError);
    const QUrl source = write("a.pdf", book("A"));
    await(worker.open(source));
    await(worker.forget(source));
    EXPECT_EQ(await(worker.displaySize({source, 0}, 0)), QSizeF(595, 842));
}

} // namespace folvane
