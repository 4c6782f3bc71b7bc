#include "tools/compress/RungBuilder.h"

#include "documents/ModelTest.h"
#include "documents/buildPlans.h"
#include "platform/tasks/Cancelled.h"

namespace folvane {
namespace {

const Compression::Rung medium = Compression::rung(Compression::Choice::Medium);

class RungBuilders : public ModelTest {
protected:
    BuildPlan plan(const QString& name, int pages)
    {
        return buildPlan(model->stamps, open({putPdf(name, pages)})->pages);
    }
    QCoro::Task<QByteArray> build(const Compression::Rung& rung, std::stop_token stop = {})
    {
        return RungBuilder::build(builder, rung, stop);
    }

    std::shared_ptr<RungBuilder> builder = std::make_shared<RungBuilder>(engine, plan("a.pdf", 2));
};

TEST_F(RungBuilders, BuildOnceForAllWhoAsk)
{
    QCoro::Task<QByteArray> first = build(medium);
    QCoro::Task<QByteArray> second = build(medium);
    const QByteArray data = await(std::move(first));
    EXPECT_TRUE(data.startsWith("%PDF"));
    EXPECT_EQ(await(std::move(second)), data);
    EXPECT_EQ(await(build(medium)), data);
    EXPECT_EQ(builder->builds(), 1);
}

TEST_F(RungBuilders, TakeOverWhenTheFirstIsStopped)
{
    QCoro::Task<QByteArray> before = engine.build(plan("long.pdf", 500), {});
    std::stop_source stop;
    QCoro::Task<QByteArray> stopped = build(medium, stop.get_token());
    QCoro::Task<QByteArray> waiting = build(medium);
    stop.request_stop();
    EXPECT_THROW(await(std::move(stopped)), Cancelled);
    EXPECT_TRUE(await(std::move(waiting)).startsWith("%PDF"));
    EXPECT_EQ(builder->builds(), 2);
    await(std::move(before));
}

TEST_F(RungBuilders, LetWhoWaitsGoAtOnceWhenStopped)
{
    std::stop_source stop;
    QCoro::Task<QByteArray> first = build(medium);
    QCoro::Task<QByteArray> waiting = build(medium, stop.get_token());
    stop.request_stop();
    EXPECT_TRUE(waiting.isReady());
    EXPECT_THROW(await(std::move(waiting)), Cancelled);
    EXPECT_TRUE(await(std::move(first)).startsWith("%PDF"));
    EXPECT_THROW(await(build(medium, stop.get_token())), Cancelled) << "also when it is there";
}

} // namespace
} // namespace folvane
