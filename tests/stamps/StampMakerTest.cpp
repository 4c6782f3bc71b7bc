#include "stamps/StampMaker.h"
#include "stamps/cutOut.h"
#include "stamps/liftInk.h"
#include "support/await.h"

#include <QBuffer>
#include <QPainter>

#include <gmock/gmock.h>

namespace folvane {
namespace {

using Kind = StampMaker::StampError::Kind;

QByteArray file(const QImage& image, const char* format = "PNG")
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, format);
    return bytes;
}

QImage sheet(QSize size, const QColor& ground, const QList<QRect>& ink)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(ground);
    QPainter painter(&image);
    for (const QRect& rect : ink)
        painter.fillRect(rect, QColor(20, 30, 150));
    return image;
}

QSize stampSize(const QByteArray& bytes)
{
    const StampMaker::Stamp made = await(StampMaker::shared().makeStamp(bytes));
    const QImage image = QImage::fromData(made.png, "PNG");
    EXPECT_EQ(image.size(), QSize(int(made.pixelWidth), int(made.pixelHeight)));
    EXPECT_TRUE(image.hasAlphaChannel());
    return image.size();
}

std::optional<Kind> refusal(const QByteArray& bytes)
{
    try {
        await(StampMaker::shared().makeStamp(bytes));
        return std::nullopt;
    } catch (const StampMaker::StampError& error) {
        return error.kind();
    }
}

TEST(StampMakers, CutToTheInkWithAMargin)
{
    const QSize size(300, 200);
    const auto cut = [&](QRect ink) { return file(sheet(size, Qt::transparent, {ink})); };
    EXPECT_EQ(stampSize(file(sheet(size, Qt::white, {{100, 80, 9, 9}}))), QSize(17, 17));
    EXPECT_EQ(refusal(cut({100, 80, 8, 9})), Kind::NoInk);
    EXPECT_EQ(refusal(cut({100, 80, 9, 2})), Kind::NoInk);
    EXPECT_EQ(stampSize(cut({100, 80, 9, 9})), QSize(17, 17));
    EXPECT_EQ(stampSize(cut({0, 0, 100, 60})), QSize(104, 64)) << "no margin beyond the edges";
    EXPECT_EQ(stampSize(cut({50, 10, 200, 100})), QSize(208, 108));
    EXPECT_EQ(stampSize(file(sheet({1900, 1900}, Qt::transparent, {{50, 50, 1800, 900}}))), QSize(1200, 628));
    EXPECT_EQ(refusal(file(sheet(size, Qt::white, {}))), Kind::NoInk);
    EXPECT_EQ(refusal("no picture"), Kind::Unreadable);
}

TEST(StampMakers, TakeThePaperOnlyWhereThereIsSome)
{
    const auto partly = [](int seeThrough) { // of 10,000 pixels
        ImageSamples pixels{{100, 100}, 4, std::vector<uint8_t>(40'000, 255)};
        for (int i = 0; i < seeThrough; ++i)
            pixels.bytes[size_t(4 * i + 3)] = 199;
        return pixels;
    };
    EXPECT_FALSE(hasTransparency(partly(200)));
    EXPECT_TRUE(hasTransparency(partly(201)));
    const auto lifted = [](uint8_t ink) {
        return liftInk({{1, 1}, 4, {ink, 255, 255, 255}}, {{1, 1}, 3, {255, 255, 255}}, {}).bytes;
    };
    EXPECT_EQ(lifted(255), std::vector<uint8_t>({0, 0, 0, 0}));
    EXPECT_EQ(lifted(225)[3], 0) << "less than 12 percent darker";
    EXPECT_EQ(lifted(100), std::vector<uint8_t>({99, 255, 255, 255}));
    EXPECT_EQ(lifted(186)[3], 128) << "27 percent darker";
}

TEST(StampMakers, StandPicturesUpright)
{
    QImage photo = sheet({200, 300}, Qt::white, {{40, 50, 30, 200}});
    QByteArray jpeg = file(photo, "JPEG");
    jpeg.insert(2, QByteArray::fromHex("ffe1002245786966000049492a00080000000100120103000100000006000000"
                                       "00000000")); // turned to the right
    const QSize size = stampSize(jpeg);
    EXPECT_GT(size.width(), 3 * size.height());
}

TEST(StampMakers, LetGoOfWhoStops)
{
    const QByteArray photo = file(sheet({3000, 3000}, Qt::white, {{1000, 1000, 300, 300}}));
    std::stop_source stop;
    QTimer::singleShot(20, [&stop] { stop.request_stop(); });
    EXPECT_THROW(await(StampMaker::shared().makeStamp(photo, stop.get_token())), Cancelled);
    EXPECT_EQ(refusal("no picture"), Kind::Unreadable) << "the next one is made";
}

} // namespace
} // namespace folvane
