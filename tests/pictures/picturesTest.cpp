#include "pictures/pictures.h"

#include "pictures/jpegEncoding.h"
#include "pictures/pictureFixtures.h"
#include "platform/tasks/background.h"

#include "support/await.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace folvane {

namespace {

const QRgb red = qRgb(255, 0, 0), green = qRgb(0, 255, 0), blue = qRgb(0, 0, 255),
           white = qRgb(255, 255, 255);
const QRgb cyanInk = qRgb(0, 174, 239), magentaInk = qRgb(236, 0, 140), yellowInk = qRgb(255, 242, 0),
           blackInk = qRgb(35, 31, 32);

class Pictures : public testing::Test {
protected:
    Pictures() { preparePictureDecoding(); }
};

std::optional<Picture> decoded(const QByteArray& bytes)
{
    return decodePicture(bytes, QStringLiteral("png")); // the content counts
}

testing::AssertionResult isNear(QRgb got, QRgb want, int most = 4)
{
    const auto apart = [](int a, int b) { return std::abs(a - b); };
    if (std::max({apart(qRed(got), qRed(want)), apart(qGreen(got), qGreen(want)),
                  apart(qBlue(got), qBlue(want)), apart(qAlpha(got), qAlpha(want))})
        <= most)
        return testing::AssertionSuccess();
    const auto shown = [](QRgb c) { return QColor::fromRgba(c).name(QColor::HexArgb).toStdString(); };
    return testing::AssertionFailure() << shown(got) << " instead of " << shown(want);
}

void expectFields(const std::optional<Picture>& picture, const std::array<QRgb, 4>& want, int most = 4)
{
    ASSERT_TRUE(picture);
    const int w = picture->image.width(), h = picture->image.height();
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(isNear(picture->image.pixel((1 + i % 2 * 2) * w / 4, (1 + i / 2 * 2) * h / 4),
                           want[size_t(i)], most))
            << "field " << i;
}

QRgb middle(const std::optional<Picture>& picture)
{
    return picture ? picture->image.pixel(picture->image.width() / 2, picture->image.height() / 2) : 0;
}

QByteArray webpWithExif(QByteArray webp, int orientation)
{
    const QByteArray block = exifBlock(orientation, false);
    webp += "EXIF" + QByteArray::fromRawData("\x1A\0\0\0", 4) + block;
    const quint32 size = quint32(webp.size() - 8);
    std::memcpy(webp.data() + 4, &size, 4);
    return webp;
}

std::optional<Picture> drawing(const QByteArray& body,
                               const QByteArray& attributes = "width='40' height='20'")
{
    return decodePicture("<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
                             + attributes + ">" + body + "</svg>",
                         QStringLiteral("svg"));
}

} // namespace

TEST_F(Pictures, OfEveryFormatComeOutRight)
{
    for (const char* format : {"png", "bmp", "tiff", "webp", "ico", "icns", "ppm", "jpg"}) {
        SCOPED_TRACE(format);
        const bool squareOnly = QByteArray(format) == "icns";
        const QImage original = fourFields(QImage::Format_RGB32, squareOnly ? QSize(32, 32) : QSize(64, 32));
        const auto picture = decoded(encoded(original, format));
        expectFields(picture, {red, green, blue, white});
        EXPECT_EQ(picture->image.size(), original.size());
        EXPECT_EQ(picture->image.format(), QImage::Format_RGB888);
        EXPECT_FALSE(picture->hasAlpha);
    }
    for (const char* name : {"fields.gif", "fields.heic"})
        expectFields(decoded(sample(name)), {red, green, blue, white}, 12);
}

TEST_F(Pictures, OfEveryDepthAndModelComeOutRight)
{
    for (const QImage::Format format :
         {QImage::Format_RGB888, QImage::Format_RGBX64, QImage::Format_RGBA64, QImage::Format_Indexed8,
          QImage::Format_ARGB32, QImage::Format_RGB16, QImage::Format_RGB30}) {
        SCOPED_TRACE(format);
        for (const char* file : {"png", "tiff"})
            expectFields(decoded(encoded(fourFields(format), file)), {red, green, blue, white});
    }
    for (const QImage::Format format :
         {QImage::Format_Grayscale8, QImage::Format_Grayscale16, QImage::Format_RGB888}) {
        const auto picture = decoded(encoded(plain(QColor(80, 80, 80), format), "png"));
        EXPECT_TRUE(isNear(middle(picture), qRgb(80, 80, 80), 1)) << format;
        EXPECT_EQ(picture->image.format(), QImage::Format_Grayscale8) << format;
    }
}

TEST_F(Pictures, KeepTransparencyThatIsReal)
{
    for (const auto& [file, format] :
         {std::pair("png", QImage::Format_ARGB32), std::pair("png", QImage::Format_RGBA64),
          std::pair("tiff", QImage::Format_ARGB32), std::pair("webp", QImage::Format_ARGB32)}) {
        SCOPED_TRACE(file);
        const auto half = decoded(encoded(plain(QColor(200, 100, 50, 128), format), file));
        ASSERT_TRUE(half && half->hasAlpha);
        EXPECT_EQ(half->image.format(), QImage::Format_RGBA8888);
        EXPECT_TRUE(isNear(middle(half), qRgba(200, 100, 50, 128)));
        EXPECT_FALSE(decoded(encoded(plain(QColor(200, 100, 50), format), file))->hasAlpha);
    }
    const auto holed = decoded(sample("transparent.gif"));
    ASSERT_TRUE(holed && holed->hasAlpha);
    EXPECT_EQ(qAlpha(holed->image.pixel(3, 3)), 0);
    EXPECT_EQ(holed->image.pixel(4, 4), qRgb(10, 200, 30));
    EXPECT_EQ(qAlpha(middle(decoded(sample("transparent.avif")))), 128);
}

TEST_F(Pictures, TellHowTheyAreToBeTurned)
{
    const QByteArray jpeg = encodeJpeg(fourFields(), 95), png = encoded(fourFields(), "png");
    QImage withAlpha = fourFields(QImage::Format_ARGB32); // makes the extended kind of WebP file
    withAlpha.setPixel(0, 0, 0);
    const QByteArray webp = encoded(withAlpha, "webp");
    for (int orientation = 1; orientation <= 8; ++orientation) {
        const bool bigEndian = orientation % 2 == 0;
        for (const auto& file : {withJpegExif(jpeg, exifBlock(orientation, bigEndian)),
                                 withPngChunk(png, "eXIf", exifBlock(orientation, !bigEndian)),
                                 webpWithExif(webp, orientation)}) {
            const auto picture = decoded(file);
            expectFields(picture, {red, green, blue, white}, 8); // as they stand in the file
            EXPECT_EQ(picture->orientation, orientation);
        }
    }
    expectFields(decoded(sample("turned5.heic")), {red, blue, green, white}, 12); // turned by the library
    expectFields(decoded(sample("turned6.heic")), {blue, red, white, green}, 12);
    EXPECT_EQ(decoded(sample("turned6.heic"))->orientation, 1);
}

TEST_F(Pictures, HaveTheirProfilesApplied)
{
    const QColor colour(200, 40, 90);
    const QRgb swapped = qRgb(40, 200, 90);
    const QByteArray png = encoded(plain(colour), "png"), jpeg = encodeJpeg(plain(colour), 100),
                     deep = encoded(plain(colour, QImage::Format_RGBA64), "png");
    for (const QString name : {"swapped", "swappedTable"}) {
        const QByteArray profile = sample(name + ".icc");
        for (const QByteArray& file : {withPngProfile(png, profile), withPngProfile(deep, profile),
                                       withJpegProfile(jpeg, profile), sample(name + ".heic")})
            EXPECT_TRUE(isNear(middle(decoded(file)), swapped, 8));
    }
    const QByteArray clear = encoded(plain(QColor(200, 40, 90, 77), QImage::Format_ARGB32), "png");
    EXPECT_TRUE(
        isNear(middle(decoded(withPngProfile(clear, sample("swapped.icc")))), qRgba(40, 200, 90, 77), 5));
    for (const QByteArray& misfit : {sample("greenInks.icc"), sample("linearGrey.icc"), QByteArray("rubbish"),
                                     sample("swapped.icc").first(200)})
        EXPECT_TRUE(isNear(middle(decoded(withPngProfile(png, misfit))), colour.rgb(), 1));
    const QImage grey = plain(QColor(55, 55, 55), QImage::Format_Grayscale8);
    for (const QByteArray& file : {withPngProfile(encoded(grey, "png"), sample("linearGrey.icc")),
                                   withJpegProfile(encodeJpeg(grey, 100), sample("linearGrey.icc"))}) {
        EXPECT_TRUE(isNear(middle(decoded(file)), qRgb(128, 128, 128), 2)); // linear 55/255 in sRGB's curve
        EXPECT_EQ(decoded(file)->image.format(), QImage::Format_Grayscale8);
    }
}

TEST_F(Pictures, PngGammaIsApplied)
{
    const QByteArray png = encoded(plain(QColor(55, 7, 12)), "png"), linear = QByteArray::fromHex("000186A0"),
                     usual = QByteArray::fromHex("0000B18F"),
                     srgbPrimaries = QByteArray::fromHex(
                         "00007A26000080840000FA00000080E8000075300000EA6000003A9800001770");
    EXPECT_TRUE(isNear(middle(decoded(withPngChunk(png, "gAMA", linear))), qRgb(128, 47, 62), 2));
    const QByteArray tagged = withPngChunk(withPngChunk(png, "cHRM", srgbPrimaries), "gAMA", usual);
    EXPECT_TRUE(isNear(middle(decoded(tagged)), qRgb(55, 7, 12), 0)); // how many say sRGB
}

TEST_F(Pictures, CodePointsOfHeifAreApplied)
{
    const QRgb byCodePoints = middle(decoded(sample("p3ByCodePoints.heic")));
    EXPECT_TRUE(isNear(byCodePoints, middle(decoded(sample("p3ByProfile.heic"))), 3));
    EXPECT_FALSE(isNear(byCodePoints, qRgb(128, 64, 64), 3));
    EXPECT_TRUE(isNear(middle(decoded(sample("linear.heic"))), qRgb(128, 128, 128), 4));
}

TEST_F(Pictures, OfInksComeOutRight)
{
    const std::array<QRgb, 4> mixed{cyanInk, yellowInk, blackInk, qRgb(180, 117, 166)};
    expectFields(decoded(sample("cmyk.jpg")), mixed, 2);
    expectFields(decoded(sample("cmykInverted.jpg")), mixed, 2);
    expectFields(decoded(sample("ycckInverted.jpg")), mixed, 6);
    for (const char* kind : {"8", "8Separate", "16", "16Separate"})
        for (const char* tiles : {"", "Tiles16", "Tiles48"}) { // of 48 go over the edge
            SCOPED_TRACE(testing::Message() << kind << tiles);
            expectFields(decoded(sample(QStringLiteral("inks%1%2.tif").arg(kind, tiles))),
                         {cyanInk, magentaInk, yellowInk, white}, 1);
        }
}

TEST_F(Pictures, InkProfilesAreApplied)
{
    const QByteArray profile = sample("greenInks.icc"), tiff = sample("inksWithProfile.tif");
    for (const QByteArray& file : {withJpegProfile(sample("cmyk.jpg"), profile),
                                   withJpegProfile(sample("cmykInverted.jpg"), profile), tiff})
        EXPECT_TRUE(isNear(decoded(file)->image.pixel(10, 10), qRgb(0, 150, 25), 70));
    EXPECT_TRUE(isNear(decoded(tiff)->image.pixel(60, 30), white));
    EXPECT_FALSE(decoded(tiff.first(tiff.size() / 8)));
}

TEST_F(Pictures, OfTiffTheLargestCounts)
{
    for (const auto& [name, size, orientation] :
         {std::tuple("largestInTheMiddle.tif", QSize(60, 40), 8),
          std::tuple("largestIsFirstOfEqual.tif", QSize(40, 60), 1),
          std::tuple("largestFirst.tif", QSize(60, 40), 8), std::tuple("onlyOne.tif", QSize(16, 10), 6)}) {
        const std::optional<Picture> picture = decoded(sample(name));
        ASSERT_TRUE(picture) << name;
        EXPECT_EQ(picture->image.size(), size) << name;
        EXPECT_EQ(picture->orientation, orientation) << name;
    }
}

TEST_F(Pictures, CutOffAreNotDecoded)
{
    QImage noise(300, 300, QImage::Format_RGB32);
    for (int i = 0; i < 300 * 300; ++i)
        noise.setPixel(i % 300, i / 300, 0xFF000000u | quint32(i * 2654435761u) >> 8);
    QList<QByteArray> files{sample("fields.gif"), sample("fields.heic")};
    for (const char* format : {"png", "bmp", "tiff", "webp", "ppm", "ico"})
        files.append(encoded(noise, format));
    for (const QByteArray& file : files) {
        SCOPED_TRACE(file.first(4).toHex().constData());
        EXPECT_TRUE(decoded(file));
        EXPECT_FALSE(decoded(file.first(file.size() / 2)) || decoded(file.first(20)));
    }
    for (const QByteArray& none : {QByteArray(), QByteArray("no picture at all"), QByteArray("%PDF-1.7 \n")})
        EXPECT_FALSE(decoded(none));
}

TEST_F(Pictures, AboveTheBitmapLimitAreNotDecoded)
{
    EXPECT_FALSE(decoded("P4 40000 40000\n")); // 1.6 gigapixels
    EXPECT_FALSE(decoded(withPngSize(encoded(plain(Qt::red), "png"), {60'000, 30'000})));
    const auto large = decoded(encoded(plain(Qt::red, QImage::Format_RGB888, {8000, 6000}), "png"));
    ASSERT_TRUE(large); // 48 megapixels, above what Qt would take by itself
    EXPECT_EQ(large->image.size(), QSize(8000, 6000));
}

TEST_F(Pictures, DrawingsAreLargeAndTransparent)
{
    const auto half = drawing("<rect x='20' width='20' height='20' fill='#ff0000'/>");
    ASSERT_TRUE(half && half->hasAlpha);
    EXPECT_EQ(half->image.size(), QSize(vectorLongSide, vectorLongSide / 2));
    EXPECT_EQ(half->image.pixel(2600, 800), red);
    EXPECT_EQ(qAlpha(half->image.pixel(800, 800)), 0);
    const auto byViewBox = drawing("<rect width='10' height='30' fill='#0000ff'/>", "viewBox='0 0 10 30'");
    ASSERT_TRUE(byViewBox);
    EXPECT_EQ(byViewBox->image.height(), vectorLongSide);
    EXPECT_EQ(byViewBox->image.format(), QImage::Format_RGB888);
    const auto words = [] { return drawing("<text y='10'>x &amp; y</text>").has_value(); }; // needs fonts
    EXPECT_TRUE(await(inBackground(words)));
    EXPECT_FALSE(drawing("<rect", "width='4' height='4'"));
}

TEST_F(Pictures, DrawingsReachNothingOutside)
{
    QTemporaryDir folder;
    const QString outside = folder.filePath("outside.png");
    ASSERT_TRUE(plain(Qt::red).save(outside));
    const QByteArray path = outside.toUtf8(), inside = encoded(plain(Qt::blue), "png").toBase64();
    const auto image = [](const QByteArray& link) {
        return "<image width='40' height='20' xlink:href='" + link + "' preserveAspectRatio='none'/>";
    };
    const QByteArray nested =
        ("<svg xmlns='http://www.w3.org/2000/svg'>" + image(path) + "</svg>").toBase64();
    EXPECT_EQ(middle(drawing(image("data:image/png;base64," + inside))), blue);
    for (const QByteArray& link :
         {path, "file://" + path, "data:image/svg+xml;base64," + nested, "data:image/png;base64," + nested})
        EXPECT_NE(middle(drawing(image(link))), red) << link.constData();
}

TEST_F(Pictures, HostileDrawingsEnd)
{
    QByteArray entities = "<!DOCTYPE svg [<!ENTITY a0 'xxxxxxxxxx'>";
    QByteArray uses = "<g id='u0'><rect width='1' height='1'/></g>";
    for (int i = 1; i < 30; ++i) {
        const QByteArray before = QByteArray::number(i - 1), now = QByteArray::number(i);
        entities += "<!ENTITY a" + now + " '" + ("&a" + before + ";").repeated(10) + "'>";
        uses += "<g id='u" + now + "'>" + ("<use xlink:href='#u" + before + "'/>").repeated(10) + "</g>";
    }
    EXPECT_FALSE(decodePicture(entities + "]><svg><text>&a29;</text></svg>", "svg"));
    EXPECT_FALSE(drawing(QByteArray("<g>").repeated(100'000) + QByteArray("</g>").repeated(100'000)));
    drawing(uses); // drawn or not, it comes back
}

} // namespace folvane
