#include "engine/EngineTest.h"
#include "pictures/jpegEncoding.h"
#include "support/similarity.h"
#include "support/tools.h"

#include <QBuffer>
#include <QColor>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QPainter>

namespace folvane {

namespace {

/// Red, green, blue and grey quarters, so that no turn and no mirror image looks like another.
QImage quarters(QSize size, QImage::Format format = QImage::Format_RGB888)
{
    QImage image(size, QImage::Format_ARGB32);
    QPainter painter(&image);
    const int w = size.width() / 2;
    const int h = size.height() / 2;
    painter.fillRect(0, 0, w, h, Qt::red);
    painter.fillRect(w, 0, w, h, Qt::green);
    painter.fillRect(0, h, w, h, Qt::blue);
    painter.fillRect(w, h, w, h, Qt::gray);
    painter.end();
    return image.convertToFormat(format);
}

QByteArray png(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

/// A JPEG with an EXIF segment that holds nothing but the orientation.
QByteArray orientedJpeg(const QImage& image, int orientation)
{
    QByteArray exif("Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0", 25);
    exif += static_cast<char>(orientation);
    exif += QByteArray("\0\0\0\0\0\0", 6);
    const auto length = static_cast<char>(exif.size() + 2);
    QByteArray jpeg = encodeJpeg(image, 95);
    return jpeg.insert(2, QByteArray("\xff\xe1\0", 3) + length + exif);
}

} // namespace

using PicturePagesTest = EngineTest;

TEST_F(PicturePagesTest, HaveALongSideOf842PointsWhateverTheResolution)
{
    for (const QSize size : {QSize(3000, 1500), QSize(100, 50)})
        EXPECT_EQ(engine.displaySize(
                      {opened(QStringLiteral("%1.png").arg(size.width()), png(quarters(size))), 0}, 0),
                  QSizeF(842, 421));
    EXPECT_EQ(engine.displaySize({opened("thin.png", png(quarters({2, 4000}))), 0}, 90), QSizeF(842, 1));
}

class Orientations : public EngineTest, public testing::WithParamInterface<int> {};

TEST_P(Orientations, KeepTheBytesAndTurnThePage)
{
    const QByteArray jpeg = orientedJpeg(quarters({64, 32}), GetParam());
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
    const QUrl source = opened("alpha.png", png(picture));
    EXPECT_TRUE(imagesIn(built(source, {0})).contains("smask"));

    const QImage page = drawn(source, 0, 400);
    for (const auto& [x, expected] : {std::pair(100, QColor(255, 128, 0)),
                                      {250, QColor(127, 127, 255)},
                                      {350, QColor(Qt::white)},
                                      {294, QColor(127, 127, 255)}}) { // no dark fringe
        QImage wanted(1, 1, QImage::Format_RGB888);
        wanted.fill(expected);
        EXPECT_LT(largestCellDifference(page.copy(x, 100, 1, 1), wanted, 1), 12) << x;
    }
}

TEST_F(PicturePagesTest, OthersBecomeJpegAndGreyStaysGrey)
{
    const QImage colour = quarters({40, 30}), grey = quarters({40, 30}, QImage::Format_Grayscale8);
    const QString coloured = imagesIn(built(opened("colour.png", png(colour)), {0}));
    EXPECT_TRUE(coloured.contains("rgb") && coloured.contains("jpeg")) << qPrintable(coloured);
    const QString plain = imagesIn(built(opened("grey.png", png(grey)), {0}));
    EXPECT_TRUE(plain.contains("gray") && plain.contains("jpeg")) << qPrintable(plain);
}

TEST_F(PicturePagesTest, BrokenPicturesAreUnreadable)
{
    const QByteArray jpeg = encodeJpeg(quarters({400, 300}), 90);
    EXPECT_EQ(engine.open(write("headerOnly.jpg", jpeg.left(300))), OpenResult::unreadable());
    EXPECT_EQ(engine.open(write("words.png", "words")), OpenResult::unreadable());
    EXPECT_EQ(engine.open(write("pdf.jpg", "%PDF-1.4")), OpenResult::unreadable());
}

} // namespace folvane
