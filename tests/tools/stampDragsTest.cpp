#include "tools/sign/stampDrags.h"

#include "tools/sign/stampKeys.h"

#include <QKeyEvent>

#include <gtest/gtest.h>

namespace folvane {
namespace {

StampPlacement stamp(QPointF center, double width, double rotation)
{
    StampPlacement stamp;
    stamp.id = {};
    stamp.center = center;
    stamp.width = width;
    stamp.rotation = rotation;
    return stamp;
}

void expectNear(const StampPlacement& now, const StampPlacement& want)
{
    EXPECT_NEAR(now.center.x(), want.center.x(), 1e-9);
    EXPECT_NEAR(now.center.y(), want.center.y(), 1e-9);
    EXPECT_NEAR(now.width, want.width, 1e-9);
    EXPECT_NEAR(now.rotation, want.rotation, 1e-9);
}

QPointF around(double degrees)
{
    return {200 + 100 * std::cos(degrees * M_PI / 180), 400 + 100 * std::sin(degrees * M_PI / 180)};
}

TEST(StampDrags, KeepToTheirLimits)
{
    const QSizeF page(400, 800);
    const StampPlacement start = stamp({0.5, 0.5}, 0.4, 0); // its middle at 200, 400
    expectNear(movedStamp(start, page, {10, 10}, {50, 90}), stamp({0.6, 0.6}, 0.4, 0));
    expectNear(movedStamp(start, page, {10, 10}, {-900, 2000}), stamp({0, 1}, 0.4, 0));
    expectNear(resizedStamp(start, page, {300, 400}, {200, 550}), stamp({0.5, 0.5}, 0.6, 0));
    expectNear(resizedStamp(start, page, {300, 400}, {201, 400}), stamp({0.5, 0.5}, 0.03, 0));
    expectNear(resizedStamp(start, page, {300, 400}, {900, 400}), stamp({0.5, 0.5}, 1.2, 0));
    expectNear(resizedStamp(start, page, {200.5, 400.5}, {400, 400}), start);
}

struct TurnCase {
    const char* name;
    double before, by, after;
};

class StampTurns : public testing::TestWithParam<TurnCase> {};

TEST_P(StampTurns, SnapAtQuartersAndStayInOneRound)
{
    const StampPlacement start = stamp({0.5, 0.5}, 0.4, GetParam().before);
    const StampPlacement now = turnedStamp(start, {400, 800}, around(-90), around(-90 + GetParam().by));
    EXPECT_NEAR(now.rotation, GetParam().after, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, StampTurns,
    testing::Values(TurnCase{"Freely", 10, 20, 30}, TurnCase{"ToUpright", 0, 3.9, 0},
                    TurnCase{"NotQuiteToUpright", 0, 4.1, 4.1}, TurnCase{"ToAQuarter", 80, 6.5, 90},
                    TurnCase{"BeforeAQuarter", 80, 5, 85}, TurnCase{"PastHalf", 170, 40, -150},
                    TurnCase{"ToHalfFromBelow", 170, 7, 180}, TurnCase{"FromATurnedPage", 270, 20, -70}),
    [](const auto& row) { return std::string(row.param.name); });

struct KeyCase {
    const char* name;
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    StampPlacement want;
};

class StampKeys : public testing::TestWithParam<KeyCase> {};

// The page is twice as high as wide: a step down is half as large a part of it.
TEST_P(StampKeys, MoveResizeAndTurnWithoutSnapping)
{
    const QKeyEvent key(QEvent::KeyPress, GetParam().key, GetParam().modifiers);
    const auto now = stampAfterKey(stamp({0.995, 0.5}, 1.195, 178), {400, 800}, key);
    ASSERT_TRUE(now);
    expectNear(*now, GetParam().want);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, StampKeys,
    testing::Values(KeyCase{"Left", Qt::Key_Left, {}, stamp({0.985, 0.5}, 1.195, 178)},
                    KeyCase{"RightToTheEdge", Qt::Key_Right, {}, stamp({1, 0.5}, 1.195, 178)},
                    KeyCase{"Down", Qt::Key_Down, {}, stamp({0.995, 0.505}, 1.195, 178)},
                    KeyCase{"UpFinely", Qt::Key_Up, Qt::ShiftModifier, stamp({0.995, 0.4995}, 1.195, 178)},
                    KeyCase{"LargerToTheLimit", Qt::Key_Plus, {}, stamp({0.995, 0.5}, 1.2, 178)},
                    KeyCase{"Smaller", Qt::Key_Minus, {}, stamp({0.995, 0.5}, 1.185, 178)},
                    KeyCase{"Turn", Qt::Key_BracketRight, {}, stamp({0.995, 0.5}, 1.195, 179)},
                    KeyCase{"TurnFarBeyondHalf", Qt::Key_BraceRight, Qt::ShiftModifier,
                            stamp({0.995, 0.5}, 1.195, -167)}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace folvane
