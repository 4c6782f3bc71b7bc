#include "controls/dragging/dragScrollSpeed.h"

#include <gtest/gtest.h>

#include <cmath>

namespace folvane {
namespace {

constexpr int height = 600;

TEST(DragScrollSpeed, GrowsTowardsTheEdgesAndWithTime)
{
    const int fromFarToNear[] = {560, 580, 599};
    for (double seconds = 0; seconds < 2.5; seconds += 0.5) {
        double slower = 0;
        for (const int pointer : fromFarToNear) {
            const double speed = dragScrollSpeed(pointer, height, seconds);
            EXPECT_GT(speed, slower) << pointer << " after " << seconds;
            EXPECT_GE(dragScrollSpeed(pointer, height, seconds + 0.1), speed)
                << pointer << " after " << seconds;
            EXPECT_EQ(dragScrollSpeed(height - 1 - pointer, height, seconds), -speed);
            slower = speed;
        }
        EXPECT_EQ(dragScrollSpeed(height + 500, height, seconds), slower) << "beyond the edge";
        EXPECT_EQ(dragScrollSpeed(height / 2, height, seconds), 0);
    }
}

TEST(DragScrollSpeed, ABriefTouchMovesLittleAndARestCrossesThousandsOfPages)
{
    double way = 0;
    for (double seconds = 0; seconds < 5; seconds += 0.01) {
        way += 0.01 * dragScrollSpeed(height - 1, height, seconds);
        if (std::abs(seconds - 0.5) < 0.001)
            EXPECT_LT(way, height);
    }
    EXPECT_GT(way, 254 * 1000);
}

} // namespace
} // namespace folvane
