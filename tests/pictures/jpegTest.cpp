#include "pictures/jpeg.h"

#include "pictures/jpegEncoding.h"
#include "pictures/pictureFixtures.h"
#include "support/similarity.h"

#include <gtest/gtest.h>

namespace folvane {

namespace {

/// Soft gradients, as photos have them.
QImage photo(QSize size)
{
    QImage image(size, QImage::Format_RGB888);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb(x * 255 / size.width(), y * 255 / size.height(), (x + y) % 256));
    return image;
}

const QByteArray ordinary = encodeJpeg(photo({40, 30}), 80);

} // namespace

TEST(JpegHeader, TellsWhichColoursAreTheSameInEveryReader)
{
    struct Row {
        const char* name;
        QByteArray file;
        bool want;
        int components;
    };
    const QByteArray jfif("JFIF\0\1\1\0\0\1\0\1\0\0", 14);
    for (const auto& [name, file, want, components] :
         {Row{"photo", ordinary, true, 3},
          Row{"grey", encodeJpeg(plain(Qt::gray, QImage::Format_Grayscale8), 80), true, 1},
          Row{"RGB by Adobe's marker", sample("adobeRgb.jpg"), true, 3},
          Row{"RGB by the names of components", sample("rgbByNames.jpg"), false, 3},
          Row{"RGB that claims JFIF", withJpegSegment(sample("adobeRgb.jpg"), 0xE0, jfif), false, 3},
          Row{"progressive", sample("progressive.jpg"), true, 3},
          Row{"arithmetic", sample("arithmetic.jpg"), false, 3}, Row{"inks", sample("cmyk.jpg"), false, 4}}) {
        const auto info = inspectJpeg(file);
        ASSERT_TRUE(info) << name;
        EXPECT_EQ(info->isRgbOrGrey, want) << name;
        EXPECT_EQ(info->components, components) << name;
    }
}

TEST(JpegHeader, CollectsTheProfileFromItsParts)
{
    const QByteArray profile = QByteArray(3500, 'p') + "end", tagged = withJpegProfile(ordinary, profile);
    EXPECT_EQ(inspectJpeg(tagged)->iccProfile, profile);
    QByteArray incomplete = tagged;
    incomplete.remove(2, 2 + 2 + 14 + 1000);
    EXPECT_EQ(inspectJpeg(incomplete)->iccProfile, QByteArray());
}

TEST(JpegHeader, BadExifMeansUpright)
{
    const auto orientation = [](const QByteArray& exif) {
        return inspectJpeg(withJpegExif(ordinary, exif))->orientation;
    };
    const QByteArray good = exifBlock(6, true);
    EXPECT_EQ(orientation(good), 6);
    for (int length = 0; length < 20; ++length) // cut off before the value
        EXPECT_EQ(orientation(good.first(length)), 1) << length;
    for (const int value : {0, 9, 65535})
        EXPECT_EQ(orientation(exifBlock(value, false)), 1) << value;
    EXPECT_EQ(orientation(QByteArray(good).replace(4, 4, "\xFF\xFF\xFF\xFF")), 1);
}

TEST(JpegHeader, OfMillionsOfSegmentsIsSoonRead)
{
    QByteArray file = ordinary;
    file.insert(2, QByteArray("\xFF\xE2\0\2", 4).repeated(2'000'000));
    EXPECT_EQ(inspectJpeg(withJpegProfile(file, "profile"))->iccProfile, "profile");
}

TEST(JpegHeader, RefusesWhatIsNoneOrTooLarge)
{
    QByteArray huge = ordinary;
    huge.replace(huge.indexOf("\xFF\xC0") + 5, 4, "\xFF\xDC\xFF\xDC");
    for (const QByteArray& bytes : {huge, QByteArray(), QByteArray("\xFF\xD8\xFF"), QByteArray("%PDF-1.4"),
                                    encoded(photo({4, 4}), "png")})
        EXPECT_FALSE(inspectJpeg(bytes) || decodeJpeg(bytes, 8) || decodeJpeg(bytes, 1));
}

TEST(Jpeg, RoundTripKeepsThePicture)
{
    const QImage original = photo({201, 77});
    const QByteArray fine = encodeJpeg(original, 95), coarse = encodeJpeg(original, 30);
    EXPECT_LT(coarse.size(), fine.size() / 2);
    const auto back = decodeJpeg(fine, 8);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->format(), QImage::Format_RGB888);
    EXPECT_EQ(back->size(), original.size());
    EXPECT_LT(largestCellDifference(*back, original), 3);
    EXPECT_LT(largestCellDifference(QImage::fromData(fine), original), 3); // another reader
    EXPECT_EQ(encodeJpeg(QImage(), 80), QByteArray());
    EXPECT_EQ(encodeJpeg(QImage(70'000, 1, QImage::Format_Grayscale8), 80), QByteArray());
}

TEST(Jpeg, ShrinksInEighths)
{
    const QImage original = fourFields(QImage::Format_RGB888, {320, 160});
    const QByteArray jpeg = encodeJpeg(original, 90);
    for (int eighths = 1; eighths <= 8; ++eighths) {
        const auto small = decodeJpeg(jpeg, eighths);
        ASSERT_TRUE(small);
        EXPECT_EQ(small->size(), QSize(40, 20) * eighths);
        EXPECT_LT(largestCellDifference(*small, original), 8) << eighths;
    }
    EXPECT_EQ(decodeJpeg(encodeJpeg(photo({33, 17}), 80), 1)->size(), QSize(5, 3));
    EXPECT_FALSE(decodeJpeg(jpeg, 0) || decodeJpeg(jpeg, 9));
}

TEST(Jpeg, AHalfIsEnoughAndLessIsNot)
{
    const QImage original = photo({400, 400});
    const QByteArray jpeg = encodeJpeg(original, 90), progressive = sample("progressive.jpg");
    EXPECT_TRUE(decodeJpeg(jpeg.chopped(2), 8)); // only the end marker is missing
    EXPECT_TRUE(decodeJpeg(progressive.chopped(2), 8));
    const auto most = decodeJpeg(jpeg.first(jpeg.size() * 3 / 4), 8);
    ASSERT_TRUE(most);
    EXPECT_LT(largestCellDifference(most->copy(0, 0, 400, 200), original.copy(0, 0, 400, 200)), 3);
    EXPECT_FALSE(decodeJpeg(jpeg.first(jpeg.size() / 4), 8));
}

} // namespace folvane
