#include "engine/PDFEngine.h"

#include "engine/BookFixture.h"
#include "engine/EngineTest.h"
#include "platform/tasks/Cancelled.h"
#include "support/await.h"

namespace folvane {

class PDFEngineTest : public EngineTest {
protected:
    PDFEngine worker;
};

TEST_F(PDFEngineTest, AStoppedBuildIsCancelled)
{
    BuildPlan plan;
    add(plan, write("a.pdf", book("A")), {0, 1, 2});
    const QUrl source = plan.pages[0].source.url;
    EXPECT_EQ(await(worker.open(source)), OpenResult::opened(3));
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THROW(await(worker.build(plan, stop.get_token())), Cancelled);
    EXPECT_THROW(await(worker.pictures(plan, 72, true, stop.get_token())), Cancelled);
    EXPECT_THROW(engine.open(source); engine.build(plan, stop.get_token()), Cancelled)
        << "also at the engine's own checks";
}

TEST_F(PDFEngineTest, ErrorsKeepTheirTypeAcrossTheThread)
{
    BuildPlan plan;
    add(plan, QUrl::fromLocalFile("/nowhere.pdf"), {0});
    EXPECT_THROW(await(worker.build(plan, {})), EngineError);
    const QUrl source = opened("a.pdf", book("A"));
    await(worker.open(source));
    await(worker.forget(source));
    EXPECT_EQ(await(worker.displaySize({source, 0}, 0)), QSizeF(595, 842));
}

} // namespace folvane
