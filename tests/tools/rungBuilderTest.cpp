#include "tools/compress/RungBuilder.h"

#include "documents/ModelTest.h"
#include "engine/EngineError.h"
#include "platform/tasks/Cancelled.h"
#include "tools/compress/CompressMeasuring.h"

namespace folvane {
namespace {

const Compression::Rung medium = Compression::rung(Compression::Choice::Medium);
const Compression::Rung small = Compression::rung(Compression::Choice::Small);

class RungBuilders : public ModelTest {
protected:
    RungBuilders() : builder(std::make_shared<RungBuilder>(engine, copyPlan(*open({putPdf("a.pdf", 2)})))) {}

    QCoro::Task<QByteArray> build(const Compression::Rung& rung, std::stop_token stop = {})
    {
        return RungBuilder::build(builder, rung, stop);
    }

    std::shared_ptr<RungBuilder> builder;
};

TEST_F(RungBuilders, BuildOnceForAllWhoAsk)
{
    QCoro::Task<QByteArray> first = build(medium);
    QCoro::Task<QByteArray> second = build(medium);
    QCoro::Task<QByteArray> other = build(small);
    EXPECT_EQ(builder->builds(), 2);
    const QByteArray data = await(std::move(first));
    EXPECT_TRUE(data.startsWith("%PDF"));
    EXPECT_EQ(await(std::move(second)), data);
    await(std::move(other));
    EXPECT_EQ(await(build(medium)), data);
    EXPECT_EQ(builder->builds(), 2);
}

TEST_F(RungBuilders, TakeOverWhenTheFirstIsStopped)
{
    QCoro::Task<QByteArray> before = engine.build(copyPlan(*open({putPdf("long.pdf", 500)})), {});
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

TEST_F(RungBuilders, FailForEachWhoAsks)
{
    put("a.pdf", "no longer what it was");
    QCoro::Task<QByteArray> first = build(medium);
    QCoro::Task<QByteArray> second = build(medium);
    EXPECT_THROW(await(std::move(first)), EngineError);
    EXPECT_THROW(await(std::move(second)), EngineError);
}

TEST_F(RungBuilders, TakeWhatWasBuiltBefore)
{
    builder->keep(small, "as it was");
    EXPECT_EQ(await(build(small)), "as it was");
    EXPECT_EQ(builder->builds(), 0);
}

} // namespace
} // namespace folvane
