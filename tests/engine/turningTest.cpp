#include "engine/EngineTest.h"
#include "engine/pixelSize.h"
#include "support/madePdf.h"
#include "support/tools.h"

#include <QColor>
#include <QImage>

#include <tuple>

namespace folvane {

namespace {

/// A page whose crop box starts off the origin, with a red mark at its lower left corner, as it stands in the file.
QByteArray cropped(int rotation)
{
    return pdfOfPages(
        {{"1 0 0 rg 100 150 40 40 re f",
          "/MediaBox [10 20 500 700] /CropBox [100 150 300 450] /Rotate " + QByteArray::number(rotation)}});
}

/// Where the mark must be after so many quarter turns clockwise: x and y in 0..1 from the top left.
const QPointF marks[] = {{0.02, 0.98}, {0.02, 0.02}, {0.98, 0.02}, {0.98, 0.98}};

bool isMarked(const QImage& image, QPointF at)
{
    const QColor colour(image.pixel(static_cast<int>(at.x() * (image.width() - 1)),
                                    static_cast<int>(at.y() * (image.height() - 1))));
    return colour.red() > 200 && colour.green() < 80 && colour.blue() < 80;
}

} // namespace

class Turns : public EngineTest, public testing::WithParamInterface<std::tuple<int, int>> {};

TEST_P(Turns, ShowTheSamePageInTheEngineAndInTheCopy)
{
    const auto [own, turn] = GetParam();
    const QUrl source = opened("page.pdf", cropped(own));
    const int shown = ((own % 90 ? 0 : own) + turn + 360) % 360; // no quarter counts as none
    const QSize size = shown % 180 == 0 ? QSize(200, 300) : QSize(300, 200);
    EXPECT_EQ(engine.displaySize({source, 0}, turn), QSizeF(size));

    const QImage image = engine.image({source, 0}, turn, 600)->image;
    EXPECT_EQ(image.size(), size * 2);
    EXPECT_TRUE(isMarked(image, marks[shown / 90]));

    const QString copy = built(source, {0}, turn);
    EXPECT_EQ(faultsOf(copy), QByteArray());
    const QImage outside = drawnByMupdf(copy);
    EXPECT_EQ(outside.size(), size);
    EXPECT_TRUE(isMarked(outside, marks[shown / 90]));

    const QList<QByteArray> pictures = engine.pictures({{page(source, 0, turn)}, {}, {}, {}}, 144, false);
    ASSERT_EQ(pictures.size(), 1);
    const QImage exported = QImage::fromData(pictures[0]);
    EXPECT_EQ(exported.size(), size * 2);
    EXPECT_TRUE(isMarked(exported, marks[shown / 90]));
}

INSTANTIATE_TEST_SUITE_P(Rows, Turns,
                         testing::Combine(testing::Values(-90, 0, 45, 90, 180, 270, 450),
                                          testing::Values(0, 90, 180, 270)));

TEST(PixelSize, IsRoundedToTheNearestPixelAndNeverNothing)
{
    EXPECT_EQ(pixelSize({595, 842}, 300 / 72.0), QSize(2479, 3508));
    EXPECT_EQ(pixelSize({1.5, 2.49}, 1), QSize(2, 2));
    EXPECT_EQ(pixelSize({0.2, 0.2}, 1), QSize(1, 1));
}

} // namespace folvane
