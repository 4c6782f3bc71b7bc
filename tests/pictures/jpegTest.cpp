#include "pictures/jpeg.h"

#include "pictures/pictureFixtures.h"

#include <gtest/gtest.h>

namespace folvane {

namespace {

struct AgreedCase {
    const char* name;
    QByteArray file;
    bool want;
    int components;
};
class Agreed : public testing::TestWithParam<AgreedCase> {};

QByteArray rgbSample()
{
    return "\xC0\x40\x20";
}
QByteArray jfif()
{
    return QByteArray("JFIF\0\1\1\0\0\1\0\1\0\0", 14);
}

bool near(QRgb a, QRgb b, int most)
{
    return std::abs(qRed(a) - qRed(b)) <= most && std::abs(qGreen(a) - qGreen(b)) <= most
           && std::abs(qBlue(a) - qBlue(b)) <= most;
}

/// Soft gradients, as photos have them.
QImage photo(QSize size)
{
    QImage image(size, QImage::Format_RGB888);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb(x * 255 / size.width(), y * 255 / size.height(), (x + y) % 256));
    return image;
}

} // namespace

TEST_P(Agreed, OnColoursInEveryReader)
{
    const auto info = inspectJpeg(GetParam().file);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->isRgbOrGrey, GetParam().want);
    EXPECT_EQ(info->components, GetParam().components);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Agreed,
    testing::Values(
        AgreedCase{"Photo", encodeJpeg(photo({40, 30}), 80), true, 3},
        AgreedCase{"Grey", encodeJpeg(plain(Qt::gray, QImage::Format_Grayscale8), 80), true, 1},
        AgreedCase{"AdobeRgb", plainJpeg(rgbSample(), {JpegModel::Rgb}), true, 3},
        AgreedCase{"RgbByComponentNames", plainJpeg(rgbSample(), {JpegModel::RgbWithoutMarker}), false, 3},
        AgreedCase{"RgbThatClaimsJfif",
                   withJpegSegment(plainJpeg(rgbSample(), {JpegModel::Rgb}), 0xE0, jfif()), false, 3},
        AgreedCase{"Progressive", plainJpeg(rgbSample(), {.progressive = true}), true, 3},
        AgreedCase{"Arithmetic", plainJpeg(rgbSample(), {.arithmetic = true}), false, 3},
        AgreedCase{"Cmyk", plainJpeg("abcd", {JpegModel::CmykAdobe}), false, 4}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(JpegHeader, TellsTheCoding)
{
    EXPECT_TRUE(inspectJpeg(plainJpeg(rgbSample(), {.progressive = true}))->progressive);
    EXPECT_FALSE(inspectJpeg(plainJpeg(rgbSample(), {}))->progressive);
    const auto both = inspectJpeg(plainJpeg(rgbSample(), {.progressive = true, .arithmetic = true}));
    EXPECT_TRUE(both->progressive && both->arithmetic);
}

TEST(JpegHeader, CollectsTheProfileFromItsParts)
{
    const QByteArray jpeg = encodeJpeg(photo({40, 30}), 80);
    const QByteArray profile = QByteArray(3500, 'p') + "end";
    const QByteArray tagged = withJpegProfile(jpeg, profile);
    EXPECT_EQ(inspectJpeg(tagged)->iccProfile, profile);
    QByteArray incomplete = tagged;
    incomplete.remove(2, 2 + 2 + 14 + 1000);
    EXPECT_EQ(inspectJpeg(incomplete)->iccProfile, QByteArray());
}

TEST(JpegHeader, BadExifMeansUpright)
{
    const QByteArray jpeg = encodeJpeg(photo({40, 30}), 80);
    const QByteArray good = exifBlock(6, true);
    EXPECT_EQ(inspectJpeg(withJpegExif(jpeg, good))->orientation, 6);
    for (int length = 0; length < 20; ++length) // cut off before the value
        EXPECT_EQ(inspectJpeg(withJpegExif(jpeg, good.first(std::min<qsizetype>(length, good.size()))))
                      ->orientation,
                  1)
            << length;
    for (const int value : {0, 9, 65535})
        EXPECT_EQ(inspectJpeg(withJpegExif(jpeg, exifBlock(value, false)))->orientation, 1);
    QByteArray farAway = good;
    farAway.replace(4, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_EQ(inspectJpeg(withJpegExif(jpeg, farAway))->orientation, 1);
}

TEST(JpegHeader, RefusesWhatIsNoneOrTooLarge)
{
    QByteArray huge = encodeJpeg(photo({40, 30}), 80);
    const qsizetype frame = huge.indexOf("\xFF\xC0");
    huge.replace(frame + 5, 4, "\xFF\xDC\xFF\xDC");
    EXPECT_FALSE(inspectJpeg(huge));
    EXPECT_FALSE(decodeJpeg(huge, 8)); // and allocates nothing of the kind
    EXPECT_FALSE(decodeJpeg(huge, 1));
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("\xFF\xD8\xFF"), QByteArray("%PDF-1.4"), encoded(photo({4, 4}), "png")})
        EXPECT_FALSE(inspectJpeg(bytes) || decodeJpeg(bytes, 8));
}

TEST(Jpeg, RoundTripKeepsThePicture)
{
    const QImage original = photo({201, 77});
    const QByteArray fine = encodeJpeg(original, 95), coarse = encodeJpeg(original, 30);
    EXPECT_LT(coarse.size(), fine.size() / 2);
    const auto back = decodeJpeg(fine, 8);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->size(), original.size());
    EXPECT_EQ(back->format(), QImage::Format_RGB888);
    for (const QPoint point : {QPoint(10, 10), QPoint(150, 40), QPoint(40, 70)})
        EXPECT_TRUE(near(back->pixel(point), original.pixel(point), 8));
    EXPECT_EQ(QImage::fromData(fine).size(), original.size()); // another reader
}

TEST(Jpeg, GreyStaysOneComponent)
{
    const auto back = decodeJpeg(encodeJpeg(plain(QColor(77, 77, 77), QImage::Format_Grayscale8), 85), 8);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->format(), QImage::Format_Grayscale8);
    EXPECT_NEAR(qGray(back->pixel(5, 5)), 77, 1);
}

TEST(Jpeg, ShrinksInEighths)
{
    const QByteArray jpeg = encodeJpeg(fourFields(QImage::Format_RGB888, {320, 160}), 90);
    for (int eighths = 1; eighths <= 8; ++eighths) {
        const auto small = decodeJpeg(jpeg, eighths);
        ASSERT_TRUE(small);
        EXPECT_EQ(small->size(), QSize(40 * eighths, 20 * eighths));
        EXPECT_TRUE(near(small->pixel(30 * eighths, 5 * eighths), qRgb(0, 255, 0), 8));
    }
    EXPECT_EQ(decodeJpeg(encodeJpeg(photo({33, 17}), 80), 1)->size(), QSize(5, 3));
    EXPECT_FALSE(decodeJpeg(jpeg, 0) || decodeJpeg(jpeg, 9));
}

TEST(Jpeg, RefusesWhatCannotBeEncoded)
{
    EXPECT_EQ(encodeJpeg(QImage(), 80), QByteArray());
    EXPECT_EQ(encodeJpeg(QImage(70'000, 1, QImage::Format_Grayscale8), 80), QByteArray());
}

TEST(Jpeg, AHalfIsEnoughAndLessIsNot)
{
    for (const bool progressive : {false, true}) {
        const QByteArray jpeg = progressive ? plainJpeg(rgbSample(), {.progressive = true}, {400, 400})
                                            : encodeJpeg(photo({400, 400}), 90);
        EXPECT_TRUE(decodeJpeg(jpeg.first(jpeg.size() - 2), 8))
            << progressive; // only the end marker is missing
        EXPECT_FALSE(decodeJpeg(jpeg.first(jpeg.lastIndexOf("\xFF\xDA") + 14), 8) && !progressive);
    }
    const QByteArray jpeg = encodeJpeg(photo({400, 400}), 90);
    const auto most = decodeJpeg(jpeg.first(jpeg.size() * 3 / 4), 8);
    ASSERT_TRUE(most);
    EXPECT_TRUE(near(most->pixel(100, 100), photo({400, 400}).pixel(100, 100), 12));
    EXPECT_FALSE(decodeJpeg(jpeg.first(jpeg.size() / 4), 8));
}

TEST(Jpeg, NoDamageCrashesIt)
{
    const QByteArray jpeg =
        withJpegProfile(withJpegExif(encodeJpeg(photo({48, 48}), 80), exifBlock(3, false)), "profile");
    for (qsizetype i = 0; i < jpeg.size(); i += 3) {
        QByteArray damaged = jpeg;
        damaged[i] = char(damaged[i] ^ (1 << i % 8));
        damaged[(i * 7) % damaged.size()] = char(0xFF);
        inspectJpeg(damaged);
        if (const auto image = decodeJpeg(damaged, 8))
            EXPECT_FALSE(image->isNull());
        decodeCmykJpeg(damaged, 8);
    }
}

} // namespace folvane
