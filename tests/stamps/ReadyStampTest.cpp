#include "stamps/ReadyStamp.h"
#include "stamps/ReadyStampRenderer.h"

#include <QImage>

#include <gtest/gtest.h>

namespace folvane {
namespace {

using namespace ReadyStampRenderer;

TEST(ReadyStamps, AreKnownByTheirContents)
{
    const QUuid paid = stampID("PAID", {}, StampInk::Red);
    EXPECT_EQ(paid.toString(QUuid::WithoutBraces),
              "0917901d-8aff-5af3-90a6-0fa861673aa4"); // sha256sum of "ready|PAID||red"
    EXPECT_EQ(paid.version(), QUuid::Sha1) << "5";
    EXPECT_NE(paid, stampID({}, "PAID", StampInk::Red));
    EXPECT_NE(paid, stampID("PAID", {}, stampInk("blue")));
    EXPECT_EQ(paid, stampID("PAID", {}, stampInk("green"))) << "no ink";
    EXPECT_EQ(readyStampName("PAID", "Nov 23, 2026"), "PAID · Nov 23, 2026");
    EXPECT_EQ(readyStampName({}, "Nov 23, 2026"), "Nov 23, 2026");
    EXPECT_EQ(customWord("  paid in cash "), "PAID IN CASH");
    EXPECT_EQ(customWord(QString(50, 'a')), QString(40, 'A'));
    EXPECT_EQ(customWord(" \n"), "");
}

TEST(ReadyStamps, AreDrawn)
{
    EXPECT_FALSE(render({}, {}, StampInk::Red));
    const auto word = render("PAID", {}, StampInk::Red), both = render("PAID", "Nov 23, 2026", StampInk::Red),
               date = render({}, "Nov 23, 2026", StampInk::Black);
    EXPECT_EQ(word->pixelHeight, 294); // 112, and 1.21 (Inter's ascent and descent) times 150
    EXPECT_EQ(both->pixelHeight, 414); // and 26, and 1.21 times 78
    EXPECT_EQ(date->pixelHeight, 258); // 112, and 1.21 times 120
    const QImage image = QImage::fromData(word->png, "PNG");
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(image.pixelColor(10, image.height() / 2).rgba(), colorOf(StampInk::Red).rgba()) << "the border";
    int lettersAcross = 0; // pixels of ink where the word stands
    for (int x = 60; x < image.width() - 60; ++x)
        lettersAcross += image.pixelColor(x, image.height() / 2).alpha() > 200;
    EXPECT_GT(lettersAcross, image.width() / 6);
}

} // namespace
} // namespace folvane
