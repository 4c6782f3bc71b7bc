#include "engine/EngineTest.h"
#include "pdf/madeImages.h"
#include "platform/tasks/Cancelled.h"
#include "support/madePdf.h"
#include "support/similarity.h"
#include "support/tools.h"

#include <QFileInfo>

namespace folvane {

namespace {

/// Pages that are shown turned, cut by a crop box off the origin, each with a photograph and a word.
QByteArray album()
{
    QList<MadePage> pages;
    for (int i = 0; i < 4; ++i)
        pages << MadePage{"q 320 0 0 220 40 20 cm /Im0 Do Q BT /F1 20 Tf 100 100 Td (Page"
                              + QByteArray::number(i) + ") Tj ET",
                          "/MediaBox [0 0 400 300] /CropBox [30 10 370 250] /Rotate "
                              + QByteArray::number(90 * i)
                              + " /Resources << /XObject << /Im0 11 0 R >> /Font << /F1 << /Type /Font "
                                "/Subtype /Type1 /BaseFont /Helvetica >> >> >>"};
    return pdfOfPages(pages, {},
                      {pdfStream("/Type /XObject /Subtype /Image /Width 900 /Height 600 /ColorSpace "
                                 "/DeviceRGB /BitsPerComponent 8 /Filter /DCTDecode",
                                 pdf::madeJpeg({900, 600}, 3))});
}

class SmallerBuilds : public EngineTest {
protected:
    void SetUp() override
    {
        add(plan, opened(QStringLiteral("album.pdf"), album()), {0, 1, 2, 3});
        original = built(plan);
    }

    BuildPlan plan;
    QString original;
};

const CompressionStep smallStep{400, 0.55, false};
const CompressionStep pictureStep{500, 0.5, true};

} // namespace

TEST_F(SmallerBuilds, TurnsPagesIntoPicturesAsTheyAreShown)
{
    plan.quality = pictureStep;
    const QString pictures = built(plan);
    EXPECT_EQ(faultsOf(pictures).toStdString(), "");
    EXPECT_EQ(textOf(pictures).trimmed(), "");
    EXPECT_TRUE(runTool("pdfinfo", {pictures}).output.contains("Creator:         Folvane"));
    EXPECT_EQ(imagesIn(pictures).filter(" jpeg ").filter(" 500 ").size(), 4); // the long side of each
    engine.open(QUrl::fromLocalFile(pictures));
    for (int page = 0; page < 4; ++page) {
        EXPECT_EQ(engine.displaySize({QUrl::fromLocalFile(pictures), page}, 0),
                  engine.displaySize(plan.pages[static_cast<size_t>(page)].source, 0));
        EXPECT_LT(largestCellDifference(drawn(original, page), drawn(pictures, page)), 8) << page;
        EXPECT_LT(largestCellDifference(drawn(original, page), drawn(pictures, page), 40), 60) << page;
    }
}

// What one rung leaves for the next must neither show in it nor outlive a change of the pages.
TEST_F(SmallerBuilds, TakesTheSamePicturesWhateverWasBuiltBefore)
{
    for (const CompressionStep& step : {smallStep, pictureStep}) {
        plan.quality = step;
        const QString alone = built(plan);
        plan.quality = CompressionStep{900, 0.6, step.pagesAsPictures};
        EXPECT_GT(QFileInfo(built(plan)).size(), QFileInfo(alone).size());
        plan.quality = step;
        const QString after = built(plan);
        EXPECT_EQ(QFileInfo(after).size(), QFileInfo(alone).size());
        for (int page = 0; page < 4; ++page)
            EXPECT_EQ(drawn(after, page), drawn(alone, page)) << page;
    }

    plan.pages[0].turn = 90;
    const QString turned = built(plan);
    plan.quality = std::nullopt;
    EXPECT_LT(largestCellDifference(drawn(built(plan), 0), drawn(turned, 0)), 8);
}

TEST_F(SmallerBuilds, TakesPicturesInGreyOfPagesWithoutColour)
{
    const QByteArray grey = pdfOfPages({{shownText("Grey") + " 0.4 g 60 60 80 20 re f"}});
    BuildPlan mixed;
    add(mixed, opened(QStringLiteral("grey.pdf"), grey), {0});
    mixed.pages.push_back(plan.pages.front());
    const QString copy = built(mixed);
    mixed.quality = pictureStep;
    const QString pictures = built(mixed);
    EXPECT_EQ(imagesIn(pictures).filter(" gray ").size(), 1);
    EXPECT_EQ(imagesIn(pictures).filter(" rgb ").size(), 1);
    for (int page = 0; page < 2; ++page)
        EXPECT_LT(largestCellDifference(drawn(copy, page), drawn(pictures, page)), 8) << page;
}

TEST_F(SmallerBuilds, ProtectsPicturesOfPages)
{
    plan.quality = pictureStep;
    plan.password = QStringLiteral("secret");
    const QString locked = built(plan);
    EXPECT_EQ(engine.open(QUrl::fromLocalFile(locked)).kind, OpenResult::Kind::NeedsPassword);
    EXPECT_EQ(faultsOf(locked, {"--password=secret"}).toStdString(), "");
    EXPECT_LT(largestCellDifference(drawn(original, 1), drawn(locked, 1)), 8);
}

TEST_F(SmallerBuilds, FailsForAMissingPageAndEndsWhenStopped)
{
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THROW(engine.build(plan, stop.get_token()), Cancelled);
    EXPECT_THROW(engine.pictures(plan, 72, true, stop.get_token()), Cancelled);
    for (const CompressionStep& step : {smallStep, pictureStep}) {
        plan.quality = step;
        EXPECT_THROW(engine.build(plan, stop.get_token()), Cancelled);
        BuildPlan broken = plan;
        broken.pages[2].source.index = 9;
        EXPECT_THROW(engine.build(broken), EngineError);
    }
}

} // namespace folvane
