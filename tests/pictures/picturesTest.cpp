#include "pictures/pictures.h"

#include "pictures/jpeg.h"
#include "pictures/orientation.h"
#include "pictures/pictureFixtures.h"
#include "platform/files/fileKind.h"
#include "platform/tasks/background.h"

#include "support/await.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <ostream>

namespace folvane {

namespace {

const QRgb red = qRgb(255, 0, 0), green = qRgb(0, 255, 0), blue = qRgb(0, 0, 255),
           white = qRgb(255, 255, 255);

class Pictures : public testing::Test {
protected:
    Pictures() { preparePictureDecoding(); }
};

std::string shown(QRgb c)
{
    return QColor::fromRgba(c).name(QColor::HexArgb).toStdString();
}

testing::AssertionResult isNear(QRgb got, QRgb want, int most = 4)
{
    const auto apart = [](int a, int b) { return std::abs(a - b); };
    if (std::max({apart(qRed(got), qRed(want)), apart(qGreen(got), qGreen(want)),
                  apart(qBlue(got), qBlue(want)), apart(qAlpha(got), qAlpha(want))})
        <= most)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << shown(got) << " instead of " << shown(want);
}

/// The four fields of a picture in reading order.
std::array<QRgb, 4> fields(const QImage& image)
{
    const int w = image.width(), h = image.height();
    return {image.pixel(w / 4, h / 4), image.pixel(3 * w / 4, h / 4), image.pixel(w / 4, 3 * h / 4),
            image.pixel(3 * w / 4, 3 * h / 4)};
}

void expectFields(const std::optional<Picture>& picture, const std::array<QRgb, 4>& want, int most = 4)
{
    ASSERT_TRUE(picture);
    const std::array<QRgb, 4> got = fields(upright(picture->image, picture->orientation));
    for (size_t i = 0; i < 4; ++i)
        EXPECT_TRUE(isNear(got[i], want[i], most)) << "field " << i;
}

QRgb middle(const std::optional<Picture>& picture)
{
    return picture ? picture->image.pixel(picture->image.width() / 2, picture->image.height() / 2) : 0;
}

/// Where the fields lie once a stored picture of that orientation is upright. (EXIF 2.3, table of tag
/// 0x0112.)
std::array<QRgb, 4> uprightFields(int orientation)
{
    switch (orientation) {
    case 2: return {green, red, white, blue};
    case 3: return {white, blue, green, red};
    case 4: return {blue, white, red, green};
    case 5: return {red, blue, green, white};
    case 6: return {blue, red, white, green};
    case 7: return {white, green, blue, red};
    case 8: return {green, white, red, blue};
    default: return {red, green, blue, white};
    }
}

QByteArray webpWithExif(QByteArray webp, int orientation)
{
    const QByteArray block = exifBlock(orientation, false);
    webp += "EXIF" + QByteArray::fromRawData("\x1A\0\0\0", 4) + block;
    const quint32 size = quint32(webp.size() - 8);
    std::memcpy(webp.data() + 4, &size, 4);
    return webp;
}

QByteArray svg(const QByteArray& body, const QByteArray& attributes = "width='40' height='20'")
{
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' " + attributes
           + ">" + body + "</svg>";
}

} // namespace

TEST_F(Pictures, OfEveryFormatComeOutRight)
{
    for (const char* format : {"png", "bmp", "tiff", "webp", "ico", "icns", "ppm", "jpg"}) {
        SCOPED_TRACE(format);
        const bool squareOnly = QByteArray(format) == "icns";
        const QImage original = fourFields(QImage::Format_RGB32, squareOnly ? QSize(32, 32) : QSize(64, 32));
        const auto picture = decodePicture(encoded(original, format), format);
        expectFields(picture, {red, green, blue, white});
        EXPECT_EQ(picture->image.size(), original.size());
        EXPECT_EQ(picture->image.format(), QImage::Format_RGB888);
        EXPECT_FALSE(picture->hasAlpha);
    }
}

TEST_F(Pictures, TheKindListNamesWhatIsDecoded)
{
    const QByteArray file = encoded(fourFields(), "png");
    for (const QString& extension : pictureExtensions())
        EXPECT_TRUE(decodePicture(file, extension)) << qPrintable(extension); // the content counts
}

TEST_F(Pictures, OfEveryDepthAndModelComeOutRight)
{
    for (const QImage::Format format :
         {QImage::Format_RGB888, QImage::Format_RGBX64, QImage::Format_RGBA64, QImage::Format_Indexed8,
          QImage::Format_ARGB32, QImage::Format_RGB16, QImage::Format_RGB30}) {
        SCOPED_TRACE(format);
        for (const char* file : {"png", "tiff"})
            expectFields(decodePicture(encoded(fourFields(format), file), file), {red, green, blue, white});
    }
    for (const QImage::Format format :
         {QImage::Format_Grayscale8, QImage::Format_Grayscale16, QImage::Format_RGB888}) {
        SCOPED_TRACE(format);
        const auto picture = decodePicture(encoded(plain(QColor(80, 80, 80), format), "png"), "png");
        EXPECT_TRUE(isNear(middle(picture), qRgb(80, 80, 80), 1));
        EXPECT_EQ(picture->image.format(), QImage::Format_Grayscale8);
    }
    QImage mono(32, 32, QImage::Format_Mono);
    mono.setColorTable({qRgb(200, 0, 0), white});
    mono.fill(0);
    EXPECT_TRUE(isNear(middle(decodePicture(encoded(mono, "png"), "png")), qRgb(200, 0, 0)));
}

TEST_F(Pictures, KeepTransparencyThatIsReal)
{
    for (const char* file : {"png", "tiff", "webp"}) {
        SCOPED_TRACE(file);
        const auto half =
            decodePicture(encoded(plain(QColor(200, 100, 50, 128), QImage::Format_ARGB32), file), file);
        ASSERT_TRUE(half);
        EXPECT_TRUE(half->hasAlpha);
        EXPECT_EQ(half->image.format(), QImage::Format_RGBA8888);
        EXPECT_TRUE(isNear(middle(half), qRgba(200, 100, 50, 128)));
        EXPECT_FALSE(
            decodePicture(encoded(plain(QColor(200, 100, 50), QImage::Format_ARGB32), file), file)->hasAlpha);
    }
    const auto deep =
        decodePicture(encoded(plain(QColor(200, 100, 50, 128), QImage::Format_RGBA64), "png"), "png");
    EXPECT_TRUE(isNear(middle(deep), qRgba(200, 100, 50, 128)));
    QImage palette(16, 16, QImage::Format_Indexed8);
    palette.setColorTable({qRgba(10, 200, 30, 255), qRgba(10, 200, 30, 0)});
    palette.fill(0);
    palette.setPixel(3, 3, 1);
    for (const QByteArray& file : {encoded(palette, "png"), gifFile(palette, 1)}) {
        const auto holed = decodePicture(file, "gif");
        ASSERT_TRUE(holed && holed->hasAlpha);
        EXPECT_EQ(qAlpha(holed->image.pixel(3, 3)), 0);
        EXPECT_EQ(holed->image.pixel(4, 4), qRgb(10, 200, 30));
    }
}

TEST_F(Pictures, AreTurnedUpright)
{
    const QByteArray jpeg = encodeJpeg(fourFields(), 95), png = encoded(fourFields(), "png");
    QImage withAlpha = fourFields(QImage::Format_ARGB32); // makes the extended kind of WebP file
    withAlpha.setPixel(0, 0, 0);
    const QByteArray webp = encoded(withAlpha, "webp");
    for (int orientation = 1; orientation <= 8; ++orientation) {
        SCOPED_TRACE(orientation);
        const auto want = uprightFields(orientation);
        const auto turned =
            decodePicture(withJpegExif(jpeg, exifBlock(orientation, orientation % 2 == 0)), "jpg");
        expectFields(turned, want, 8);
        expectFields(decodePicture(withPngChunk(png, "eXIf", exifBlock(orientation, true)), "png"), want);
        expectFields(decodePicture(webpWithExif(webp, orientation), "webp"), want);
        expectFields(
            decodePicture(
                heifFile(fourFields(QImage::Format_RGB888, {128, 64}), {.orientation = orientation}), "heic"),
            want, 12);
    }
}

TEST_F(Pictures, FromPhonesComeOutRight)
{
    for (const HeifCodec codec : {HeifCodec::Hevc, HeifCodec::Av1}) {
        const auto picture =
            decodePicture(heifFile(fourFields(QImage::Format_RGB888, {128, 64}), {.codec = codec}), "avif");
        expectFields(picture, {red, green, blue, white}, 12);
        const auto half = decodePicture(
            heifFile(plain(QColor(200, 100, 50, 128), QImage::Format_ARGB32, {64, 64}), {.codec = codec}),
            "heic");
        ASSERT_TRUE(half && half->hasAlpha);
        EXPECT_TRUE(isNear(middle(half), qRgba(200, 100, 50, 128), 8));
    }
}

TEST_F(Pictures, HaveTheirProfilesApplied)
{
    const QColor colour(200, 40, 90);
    const QRgb swapped = qRgb(40, 200, 90);
    const QByteArray png = encoded(plain(colour), "png"), jpeg = encodeJpeg(plain(colour), 100);
    for (const QByteArray& profile : {swappedProfile(), swappedTableProfile()}) {
        EXPECT_TRUE(isNear(middle(decodePicture(withPngProfile(png, profile), "png")), swapped, 5));
        EXPECT_TRUE(isNear(middle(decodePicture(withJpegProfile(jpeg, profile), "jpg")), swapped, 5));
        EXPECT_TRUE(isNear(
            middle(decodePicture(
                heifFile(plain(colour, QImage::Format_RGB888, {64, 64}), {.iccProfile = profile}), "heic")),
            swapped, 8));
    }
    const QByteArray deep = encoded(plain(colour, QImage::Format_RGBA64), "png");
    EXPECT_TRUE(
        isNear(middle(decodePicture(withPngProfile(deep, swappedTableProfile()), "png")), swapped, 5));
    const QByteArray clear = encoded(plain(QColor(200, 40, 90, 77), QImage::Format_ARGB32), "png");
    EXPECT_TRUE(isNear(middle(decodePicture(withPngProfile(clear, swappedProfile()), "png")),
                       qRgba(40, 200, 90, 77), 5));
}

TEST_F(Pictures, GreyProfilesStayGrey)
{
    const QByteArray png = encoded(plain(QColor(55, 55, 55), QImage::Format_Grayscale8), "png");
    const QByteArray jpeg = encodeJpeg(plain(QColor(55, 55, 55), QImage::Format_Grayscale8), 100);
    for (const auto& picture : {decodePicture(withPngProfile(png, linearGreyProfile()), "png"),
                                decodePicture(withJpegProfile(jpeg, linearGreyProfile()), "jpg")}) {
        EXPECT_TRUE(isNear(middle(picture), qRgb(128, 128, 128), 2)); // linear 55/255 in sRGB's curve
        EXPECT_EQ(picture->image.format(), QImage::Format_Grayscale8);
    }
}

TEST_F(Pictures, IgnoreProfilesThatDoNotFit)
{
    const QRgb colour = qRgb(200, 40, 90);
    const QByteArray png = encoded(plain(QColor(colour)), "png");
    for (const QByteArray& profile :
         {greenInksProfile(), linearGreyProfile(), QByteArray("rubbish"), swappedProfile().first(200)})
        EXPECT_TRUE(isNear(middle(decodePicture(withPngProfile(png, profile), "png")), colour, 1));
}

TEST_F(Pictures, PngGammaIsApplied)
{
    const QByteArray png = encoded(plain(QColor(55, 55, 55), QImage::Format_RGB888), "png");
    const QByteArray linear = withPngChunk(png, "gAMA", QByteArray::fromHex("000186A0"));
    EXPECT_TRUE(isNear(middle(decodePicture(linear, "png")), qRgb(128, 128, 128), 2));
    const QByteArray usual = encoded(plain(QColor(55, 7, 12)), "png"),
                     gamma = QByteArray::fromHex("0000B18F");
    const QByteArray srgbPrimaries =
        QByteArray::fromHex("00007A26000080840000FA00000080E8000075300000EA6000003A9800001770");
    const QByteArray tagged = withPngChunk(withPngChunk(usual, "cHRM", srgbPrimaries), "gAMA", gamma);
    EXPECT_TRUE(isNear(middle(decodePicture(tagged, "png")), qRgb(55, 7, 12), 0)); // how many say sRGB
}

TEST_F(Pictures, CodePointsOfHeifAreApplied)
{
    const QImage image = plain(QColor(128, 64, 64), QImage::Format_RGB888, {64, 64});
    const QByteArray tagged = heifFile(image, {.primaries = 12});
    const QByteArray profiled = heifFile(image, {.iccProfile = displayP3Profile()});
    EXPECT_TRUE(isNear(middle(decodePicture(tagged, "heic")), middle(decodePicture(profiled, "heic")), 3));
    EXPECT_FALSE(isNear(middle(decodePicture(tagged, "heic")), qRgb(128, 64, 64), 3));
    const QByteArray linear =
        heifFile(plain(QColor(55, 55, 55), QImage::Format_RGB888, {64, 64}), {.primaries = 1, .transfer = 8});
    EXPECT_TRUE(isNear(middle(decodePicture(linear, "heic")), qRgb(128, 128, 128), 4));
}

TEST_F(Pictures, OfInksComeOutRight)
{
    const auto shown = [](const QByteArray& inks, JpegModel model) {
        return middle(decodePicture(plainJpeg(inks, {model}), "jpg"));
    };
    const auto inverted = [](QByteArray inks) {
        for (char& ink : inks)
            ink = char(255 - uchar(ink));
        return inks;
    };
    const QByteArray none("\0\0\0\0", 4), cyan("\xFF\0\0\0", 4), black("\0\0\0\xFF", 4),
        yellow("\0\0\xFF\0", 4);
    for (const QByteArray& inks : {none, cyan, black, yellow, QByteArray("\x40\x80\x20\x10", 4)}) {
        const QRgb plainInks = shown(inks, JpegModel::Cmyk);
        EXPECT_TRUE(isNear(shown(inverted(inks), JpegModel::CmykAdobe), plainInks, 2));
        EXPECT_TRUE(isNear(shown(inverted(inks), JpegModel::YcckAdobe), plainInks, 6));
    }
    EXPECT_TRUE(isNear(shown(none, JpegModel::Cmyk), white, 1));
    EXPECT_TRUE(isNear(shown(cyan, JpegModel::Cmyk), qRgb(0, 174, 239), 2));
    EXPECT_LT(qGray(shown(black, JpegModel::Cmyk)), 40);
}

TEST_F(Pictures, OfInksInTiffComeOutRight)
{
    const std::array<QRgb, 4> onPaper{qRgb(0, 174, 239), qRgb(236, 0, 140), qRgb(255, 242, 0), white};
    for (const int bits : {8, 16})
        for (const bool separate : {false, true})
            for (const int tile : {0, 16, 48}) { // tiles of 48 go over the edge
                SCOPED_TRACE(testing::Message()
                             << bits << " bits, separate " << separate << ", tile " << tile);
                expectFields(
                    decodePicture(inkTiff({.bits = bits, .separate = separate, .tile = tile}), "tif"),
                    onPaper, 1);
            }
    const QByteArray profiled = inkTiff({.iccProfile = greenInksProfile()});
    const QRgb magenta = fields(decodePicture(profiled, "tif")->image)[1];
    EXPECT_GT(qGreen(magenta), qRed(magenta) + 60) << shown(magenta);
    EXPECT_FALSE(decodePicture(profiled.first(profiled.size() / 8), "tif"));
}

TEST_F(Pictures, OfTiffTheLargestCounts)
{
    const TiffPicture small{Qt::red, {16, 10}, 6}, large{Qt::green, {60, 40}, 8}, other{Qt::blue, {40, 60}};
    struct Row {
        QList<TiffPicture> pictures;
        TiffPicture want;
    };
    for (const auto& [pictures, want] : {Row{{small, large, small}, large}, Row{{small, other, large}, other},
                                         Row{{large, small}, large}, Row{{small}, small}}) {
        const std::optional<Picture> picture = decodePicture(tiffFile(pictures), "tif");
        ASSERT_TRUE(picture);
        EXPECT_TRUE(isNear(middle(picture), want.colour.rgb()));
        EXPECT_EQ(picture->image.size(), want.size);
        EXPECT_EQ(picture->orientation, want.orientation);
    }
}

TEST_F(Pictures, InkProfilesAreApplied)
{
    const QByteArray profile = greenInksProfile();
    for (const auto& [inks, model] : {std::pair(QByteArray("\0\xFF\0\0", 4), JpegModel::Cmyk),
                                      std::pair(QByteArray("\xFF\0\xFF\xFF", 4), JpegModel::CmykAdobe)}) {
        const QRgb colour = middle(decodePicture(withJpegProfile(plainJpeg(inks, {model}), profile), "jpg"));
        EXPECT_GT(qGreen(colour), qRed(colour) + 60) << shown(colour);
        EXPECT_GT(qGreen(colour), qBlue(colour) + 60) << shown(colour);
    }
}

TEST_F(Pictures, CutOffAreNotDecoded)
{
    QImage noise(300, 300, QImage::Format_RGB32), palette(300, 300, QImage::Format_Indexed8);
    palette.setColorTable({red, green, blue, white});
    for (int i = 0; i < 300 * 300; ++i) {
        noise.setPixel(i % 300, i / 300, 0xFF000000u | quint32(i * 2654435761u) >> 8);
        palette.setPixel(i % 300, i / 300, i / 7 % 4);
    }
    QList<QByteArray> files{gifFile(palette)};
    for (const char* format : {"png", "bmp", "tiff", "webp", "ppm", "ico"})
        files.append(encoded(noise, format));
    for (const QByteArray& file : files) {
        SCOPED_TRACE(file.first(4).toHex().constData());
        EXPECT_TRUE(decodePicture(file, "png"));
        EXPECT_FALSE(decodePicture(file.first(file.size() / 2), "png"));
        EXPECT_FALSE(decodePicture(file.first(20), "png"));
    }
    const QByteArray heic = heifFile(fourFields(), {});
    EXPECT_FALSE(decodePicture(heic.first(heic.size() / 2), "heic"));
    EXPECT_FALSE(decodePicture(QByteArray(), "png"));
    EXPECT_FALSE(decodePicture(QByteArray("no picture at all"), "jpg"));
    EXPECT_FALSE(decodePicture(QByteArray("%PDF-1.7 \n"), "png"));
}

TEST_F(Pictures, AboveTheBitmapLimitAreNotDecoded)
{
    const QByteArray pbm = "P4 40000 40000\n"; // 1.6 gigapixels
    EXPECT_FALSE(decodePicture(pbm, "pbm"));
    EXPECT_FALSE(decodePicture(withPngSize(encoded(plain(Qt::red), "png"), {60'000, 30'000}), "png"));
    const auto large =
        decodePicture(encoded(plain(Qt::red, QImage::Format_RGB888, {8000, 6000}), "png"), "png");
    ASSERT_TRUE(large); // 48 megapixels, above what Qt would take by itself
    EXPECT_EQ(large->image.size(), QSize(8000, 6000));
}

TEST_F(Pictures, DrawingsAreLargeAndTransparent)
{
    const auto drawing = decodePicture(svg("<rect x='20' width='20' height='20' fill='#ff0000'/>"), "svg");
    ASSERT_TRUE(drawing);
    EXPECT_EQ(drawing->image.size(), QSize(vectorLongSide, vectorLongSide / 2));
    EXPECT_TRUE(drawing->hasAlpha);
    EXPECT_EQ(drawing->image.pixel(2600, 800), red);
    EXPECT_EQ(qAlpha(drawing->image.pixel(800, 800)), 0);
    const auto byViewBox =
        decodePicture(svg("<rect width='10' height='30' fill='#0000ff'/>", "viewBox='0 0 10 30'"), "svg");
    ASSERT_TRUE(byViewBox);
    EXPECT_EQ(byViewBox->image.height(), vectorLongSide);
    EXPECT_EQ(byViewBox->image.format(), QImage::Format_RGB888);
    const QByteArray words = svg("<text y='10'>x &amp; y</text>"); // needs fonts
    EXPECT_TRUE(await(inBackground([words] { return decodePicture(words, "svg").has_value(); })));
    EXPECT_FALSE(decodePicture(svg("<rect", "width='4' height='4'"), "svg"));
}

TEST_F(Pictures, DrawingsReachNothingOutside)
{
    QTemporaryDir folder;
    const QString outside = folder.filePath("outside.png");
    ASSERT_TRUE(plain(Qt::red).save(outside));
    const QByteArray path = outside.toUtf8(), inside = encoded(plain(Qt::blue), "png").toBase64();
    const auto middleOf = [](const QByteArray& link) {
        return middle(decodePicture(
            svg("<image width='40' height='20' xlink:href='" + link + "' preserveAspectRatio='none'/>"),
            "svg"));
    };
    const QByteArray nested = svg("<image width='40' height='20' xlink:href='" + path + "'/>").toBase64();
    EXPECT_EQ(middleOf("data:image/png;base64," + inside), blue);
    for (const QByteArray& link :
         {path, "file://" + path, "data:image/svg+xml;base64," + nested, "data:image/png;base64," + nested})
        EXPECT_NE(middleOf(link), red) << link.constData();
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
    EXPECT_FALSE(decodePicture(entities + "]>" + svg("<text>&a29;</text>"), "svg"));
    EXPECT_FALSE(decodePicture(
        svg(QByteArray("<g>").repeated(100'000) + QByteArray("</g>").repeated(100'000)), "svg"));
    decodePicture(svg(uses), "svg"); // drawn or not, it comes back
}

TEST_F(Pictures, NoDamageCrashesThem)
{
    const QList<QByteArray> files{withPngProfile(encoded(fourFields(), "png"), swappedTableProfile()),
                                  encoded(fourFields(), "tiff"),
                                  encoded(fourFields(), "webp"),
                                  encoded(fourFields(), "bmp"),
                                  heifFile(fourFields(), {}),
                                  inkTiff({}),
                                  gifFile(fourFields(QImage::Format_Indexed8)),
                                  withJpegProfile(encodeJpeg(fourFields(), 90), greenInksProfile())};
    for (const QByteArray& file : files) {
        for (qsizetype i = 0; i < 60; ++i) {
            QByteArray damaged = file;
            const qsizetype at = i < 40 ? i : (i * 7919) % file.size();
            damaged[std::min(at, file.size() - 1)] = char(damaged[std::min(at, file.size() - 1)] ^ 0xA5);
            if (const auto picture = decodePicture(damaged, "tif"))
                EXPECT_FALSE(picture->image.isNull());
        }
    }
}

} // namespace folvane
