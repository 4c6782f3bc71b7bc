#include "engine/EngineTest.h"
#include "pictures/jpegEncoding.h"
#include "pictures/pictureFixtures.h"
#include "support/similarity.h"
#include "support/tools.h"

#include <QColor>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QPainter>

namespace folvane {

using PicturePagesTest = EngineTest;

TEST_F(PicturePagesTest, HaveALongSideOf842PointsWhateverTheResolution)
{
    for (const auto& [pixels, points] :
         {std::pair(QSize(3000, 1500), QSize(842, 421)), {{100, 50}, {842, 421}}, {{2, 4000}, {1, 842}}}) {
        const QString name = QStringLiteral("%1.png").arg(pixels.width());
        const QUrl source = opened(name, encoded(fourFields(QImage::Format_RGB888, pixels), "png"));
        EXPECT_EQ(engine.displaySize({source, 0}, 0), QSizeF(points));
    }
}

class Orientations : public EngineTest, public testing::WithParamInterface<int> {};

TEST_P(Orientations, KeepTheBytesAndTurnThePage)
{
    const QByteArray jpeg = withJpegExif(encodeJpeg(fourFields(), 95), exifBlock(GetParam(), true));
    const QUrl source = opened("photo.jpg", jpeg);
    const QString file = built(source, {0});
    EXPECT_EQ(faultsOf(file), QByteArray());
    ASSERT_EQ(runTool("pdfimages", {"-j", file, path("image")}).exitCode, 0);
    QFile extracted(path("image-000.jpg"));
    ASSERT_TRUE(extracted.open(QIODevice::ReadOnly));
    EXPECT_EQ(extracted.readAll(), jpeg);

    QImageReader upright(path("photo.jpg"));
    upright.setAutoTransform(true);
    const QImage shown = upright.read();
    EXPECT_EQ(engine.displaySize({source, 0}, 0), GetParam() < 5 ? QSizeF(842, 421) : QSizeF(421, 842));
    EXPECT_LT(largestCellDifference(drawn(source, 0, 842), shown, 4), 12);
}

INSTANTIATE_TEST_SUITE_P(Exif, Orientations, testing::Range(1, 9));

TEST_F(PicturePagesTest, TransparencyBecomesASoftMask)
{
    QImage picture(40, 20, QImage::Format_RGBA8888);
    picture.fill(QColor(0, 0, 0, 0)); // what cannot be seen is black, and must not bleed
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(0, 0, 20, 20, QColor(255, 128, 0, 255));
    painter.fillRect(20, 0, 10, 20, QColor(0, 0, 255, 128));
    painter.end();
    const QUrl source = opened("alpha.png", encoded(picture, "png"));
    EXPECT_EQ(imagesIn(built(source, {0})).filter("smask").size(), 1);

    const QImage page = drawn(source, 0, 400);
    for (const auto& [x, expected] : {std::pair(100, QColor(255, 128, 0)),
                                      {250, QColor(127, 127, 255)},
                                      {350, QColor(Qt::white)},
                                      {294, QColor(127, 127, 255)}}) // no dark fringe
        EXPECT_LT(largestCellDifference(page.copy(x, 100, 1, 1), plain(expected), 1), 12) << x;
}

TEST_F(PicturePagesTest, OthersBecomeJpegAndGreyStaysGrey)
{
    for (const auto& [format, space] :
         {std::pair(QImage::Format_RGB888, "rgb"), std::pair(QImage::Format_Grayscale8, "gray")}) {
        const QUrl source = opened(QStringLiteral("%1.png").arg(space), encoded(fourFields(format), "png"));
        EXPECT_EQ(imagesIn(built(source, {0})).filter(space).filter("jpeg").size(), 1) << space;
    }
}

TEST_F(PicturePagesTest, BrokenPicturesAreUnreadable)
{
    const QByteArray jpeg = encodeJpeg(fourFields(QImage::Format_RGB888, {400, 300}), 90);
    EXPECT_EQ(engine.open(write("headerOnly.jpg", jpeg.left(300))), OpenResult::unreadable());
    EXPECT_EQ(engine.open(write("words.png", "words")), OpenResult::unreadable());
    EXPECT_EQ(engine.open(write("pdf.jpg", "%PDF-1.4")), OpenResult::unreadable());
}

} // namespace folvane
