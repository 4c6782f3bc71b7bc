#include "engine/Thumbnails.h"

#include "engine/BookFixture.h"
#include "engine/EngineTest.h"
#include "engine/PDFEngine.h"
#include "support/await.h"

#include <QSignalSpy>

#include <vector>

namespace folvane {

namespace {

QCoro::Task<> all(std::vector<QCoro::Task<>>& tasks)
{
    for (QCoro::Task<>& task : tasks)
        co_await std::move(task);
}

} // namespace

class ThumbnailsTest : public EngineTest {
protected:
    void SetUp() override
    {
        source = write("a.pdf", book("A"));
        await(worker.open(source));
    }

    Thumbnails::Key key(int longSide, int turn = 0) const { return {{source, 0}, turn, longSide}; }
    void load(int firstSide, int lastSide)
    {
        for (int side = firstSide; side <= lastSide; ++side)
            await(thumbnails.load(key(side)));
    }

    PDFEngine worker;
    Thumbnails thumbnails{worker};
    QUrl source;
};

TEST_F(ThumbnailsTest, MakesAPictureOnceHoweverManyAsk)
{
    const QSignalSpy arrivals(&thumbnails, &Thumbnails::changed);
    std::vector<QCoro::Task<>> askers;
    for (int i = 0; i < 3; ++i)
        askers.push_back(thumbnails.load(key(90)));
    EXPECT_TRUE(thumbnails.isLoading(key(90)));
    await(all(askers));
    await(thumbnails.load(key(90)));
    while (arrivals.isEmpty())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(arrivals.size(), 1);
    EXPECT_FALSE(thumbnails.isLoading(key(90)));
    EXPECT_EQ(thumbnails.image(key(90)).height(), 90);
}

TEST_F(ThumbnailsTest, ATurnIsAnotherPictureAndTurningBackIsImmediate)
{
    await(thumbnails.load(key(90)));
    await(thumbnails.load(key(90, 90)));
    EXPECT_EQ(thumbnails.image(key(90, 90)).width(), 90);
    EXPECT_TRUE(thumbnails.contains(key(90)));
}

TEST_F(ThumbnailsTest, KeepsSixBigPicturesAndAllSmallOnes)
{
    load(600, 606);
    EXPECT_TRUE(thumbnails.contains(key(600))) << "600 is small";
    EXPECT_TRUE(thumbnails.contains(key(601)));
    load(607, 607);
    EXPECT_FALSE(thumbnails.contains(key(601))) << "the seventh drives out the oldest big one";
    EXPECT_TRUE(thumbnails.contains(key(600)));
    EXPECT_TRUE(thumbnails.contains(key(602)));
}

TEST_F(ThumbnailsTest, The801stDropsTheOldestWhichCanComeBackAsTheNewest)
{
    await(thumbnails.load(key(700)));
    load(1, 400);
    for (int side = 1; side <= 399; ++side)
        await(thumbnails.load(key(side, 180)));
    EXPECT_TRUE(thumbnails.contains(key(700)));
    await(thumbnails.load(key(400, 180)));
    EXPECT_FALSE(thumbnails.contains(key(700)));

    await(thumbnails.load(key(700)));
    EXPECT_TRUE(thumbnails.contains(key(700)));
    EXPECT_FALSE(thumbnails.contains(key(1)));
    EXPECT_TRUE(thumbnails.contains(key(2)));
}

TEST_F(ThumbnailsTest, WhatNoViewWantsAnyMoreIsNotMadeAndIsNoFailure)
{
    const QSignalSpy failures(&thumbnails, &Thumbnails::failed);
    QObject grid;
    auto list = std::make_unique<QObject>();
    thumbnails.want(&grid, {key(90), key(91)});
    thumbnails.want(list.get(), {key(91)});
    std::vector<QCoro::Task<>> loads;
    loads.push_back(thumbnails.load(key(90)));
    loads.push_back(thumbnails.load(key(91)));
    thumbnails.want(&grid, {});
    EXPECT_FALSE(thumbnails.isLoading(key(90)));
    EXPECT_TRUE(thumbnails.isLoading(key(91))) << "the other view still wants it";
    loads.push_back(thumbnails.load(key(90)));
    await(all(loads));
    EXPECT_TRUE(thumbnails.contains(key(90))) << "asked for again";
    EXPECT_TRUE(thumbnails.contains(key(91)));

    thumbnails.want(list.get(), {key(92)});
    QCoro::Task<> last = thumbnails.load(key(92));
    list.reset();
    await(std::move(last));
    EXPECT_FALSE(thumbnails.contains(key(92)));
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(ThumbnailsTest, APageThatCannotBeDrawnIsReportedAndTriedAgain)
{
    const Thumbnails::Key nowhere{{QUrl::fromLocalFile("/nowhere.pdf"), 0}, 0, 90};
    const QSignalSpy failures(&thumbnails, &Thumbnails::failed);
    await(thumbnails.load(nowhere));
    EXPECT_TRUE(thumbnails.image(nowhere).isNull());
    EXPECT_FALSE(thumbnails.isLoading(nowhere));
    await(thumbnails.load(nowhere));
    EXPECT_EQ(failures.size(), 2);
}

} // namespace folvane
