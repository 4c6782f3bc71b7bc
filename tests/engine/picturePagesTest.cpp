#include "engine/EngineTest.h"
#include "pictures/jpegEncoding.h"
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
    QByteArray exif("Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0", 26);
    exif += static_cast<char>(orientation);
    exif += QByteArray("\0\0\0\0\0\0", 6);
    const auto length = static_cast<char>(exif.size() + 2);
    QByteArray jpeg = encodeJpeg(image, 95);
    return jpeg.insert(2, QByteArray("\xff\xe1\0", 3) + length + exif);
}

/// The largest difference of a channel between two pictures of one size, away from edges: on a grid of points.
int largestDifference(const QImage& a, const QImage& b)
{
    int most = 0;
    for (const double y : {0.1, 0.4, 0.6, 0.9}) {
        for (const double x : {0.1, 0.4, 0.6, 0.9}) {
            const QColor left(a.pixel(static_cast<int>(x * a.width()), static_cast<int>(y * a.height())));
            const QColor right(b.pixel(static_cast<int>(x * b.width()), static_cast<int>(y * b.height())));
            most = std::max({most, std::abs(left.red() - right.red()), std::abs(left.green() - right.green()),
                             std::abs(left.blue() - right.blue())});
        }
    }
    return most;
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
    EXPECT_EQ(engine.displaySize({source, 0}, 0),
              QSizeF(shown.width() > shown.height() ? QSize(842, 421) : QSize(421, 842)));
    EXPECT_LE(largestDifference(engine.image({source, 0}, 0, 842)->image, shown), 12);
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
    const QString file = built(source, {0});
    const QByteArray list = runTool("pdfimages", {"-list", file}).output;
    EXPECT_TRUE(list.contains("smask")) << list.constData();
    EXPECT_TRUE(list.contains("jpeg"));

    const QImage drawn = engine.image({source, 0}, 0, 400)->image;
    const auto near = [&](int x, QColor expected) {
        const QColor colour(drawn.pixel(x, 100));
        return std::abs(colour.red() - expected.red()) < 12
               && std::abs(colour.green() - expected.green()) < 12
               && std::abs(colour.blue() - expected.blue()) < 12;
    };
    EXPECT_TRUE(near(100, QColor(255, 128, 0)));
    EXPECT_TRUE(near(250, QColor(127, 127, 255)));
    EXPECT_TRUE(near(350, Qt::white));
    EXPECT_TRUE(near(294, QColor(127, 127, 255))) << "dark fringe at the edge";
}

TEST_F(PicturePagesTest, OthersBecomeJpegAndGreyStaysGrey)
{
    const QByteArray colour =
        runTool("pdfimages", {"-list", built(opened("colour.png", png(quarters({40, 30}))), {0})}).output;
    EXPECT_TRUE(colour.contains("rgb")) << colour.constData();
    EXPECT_TRUE(colour.contains("jpeg"));
    const QByteArray grey =
        runTool("pdfimages",
                {"-list", built(opened("grey.png", png(quarters({40, 30}, QImage::Format_Grayscale8))), {0})})
            .output;
    EXPECT_TRUE(grey.contains("gray")) << grey.constData();
    EXPECT_TRUE(grey.contains("jpeg"));
}

TEST_F(PicturePagesTest, BrokenPicturesAreUnreadable)
{
    const QByteArray jpeg = encodeJpeg(quarters({400, 300}), 90);
    EXPECT_EQ(engine.open(write("headerOnly.jpg", jpeg.left(300))), OpenResult::unreadable());
    EXPECT_EQ(engine.open(write("words.png", "words")), OpenResult::unreadable());
    EXPECT_EQ(engine.open(write("pdf.jpg", "%PDF-1.4")), OpenResult::unreadable());
}

} // namespace folvane
