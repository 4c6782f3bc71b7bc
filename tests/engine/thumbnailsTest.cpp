#include "engine/Thumbnails.h"

#include "engine/BookFixture.h"
#include "engine/EngineTest.h"
#include "engine/PDFEngine.h"
#include "support/await.h"

#include <QSignalSpy>

namespace folvane {

class ThumbnailsTest : public EngineTest {
protected:
    void SetUp() override
    {
        source = write("a.pdf", book("A"));
        await(worker.open(source));
    }

    Thumbnails::Key key(int longSide, int turn = 0) const { return {{source, 0}, turn, longSide}; }
    void load(int firstSide, int lastSide, int turn = 0)
    {
        for (int side = firstSide; side <= lastSide; ++side)
            await(thumbnails.load(key(side, turn)));
    }

    PDFEngine worker;
    Thumbnails thumbnails{worker};
    QUrl source;
};

TEST_F(ThumbnailsTest, MakesAPictureOnceHoweverManyAsk)
{
    const QSignalSpy arrivals(&thumbnails, &Thumbnails::changed);
    QCoro::Task<> first = thumbnails.load(key(90)), second = thumbnails.load(key(90));
    EXPECT_TRUE(thumbnails.isLoading(key(90)));
    await(std::move(first));
    await(std::move(second));
    await(thumbnails.load(key(90)));
    while (arrivals.isEmpty())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(arrivals.size(), 1);
    EXPECT_FALSE(thumbnails.isLoading(key(90)));
    EXPECT_EQ(thumbnails.image(key(90)).height(), 90);
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
    load(700, 700);
    load(1, 400);
    load(1, 399, 180);
    EXPECT_TRUE(thumbnails.contains(key(700)));
    load(400, 400, 180);
    EXPECT_FALSE(thumbnails.contains(key(700)));

    load(700, 700);
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
    QCoro::Task<> unwanted = thumbnails.load(key(90)), wanted = thumbnails.load(key(91));
    thumbnails.want(&grid, {});
    EXPECT_FALSE(thumbnails.isLoading(key(90)));
    EXPECT_TRUE(thumbnails.isLoading(key(91))) << "the other view still wants it";
    load(90, 90);
    await(std::move(unwanted));
    await(std::move(wanted));
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
