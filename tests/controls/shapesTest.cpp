#include "controls/style/Shadow.h"
#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <cmath>

namespace folvane {
namespace {

TEST(ContinuousRect, KeepsItsRadiusAndItsBounds)
{
    struct Corner {
        QRectF rect;
        double radius;
        double want; ///< the radius that the shape has in the middle of its corners
    };
    for (const auto& [rect, radius, want] : {
             Corner{{10, 20, 300, 200}, 18, 18},
             Corner{{0, 0, 100, 100}, 22.37, 22.37},
             Corner{{0.5, 0.5, 120, 36}, 12, 12}, // no room for all of the easing
             Corner{{0, 0, 100, 30}, 400, 15},
             Corner{{0, 0, 100, 30}, 0, 0},
         }) {
        const QPainterPath path = continuousRect(rect, radius);
        EXPECT_EQ(path.boundingRect().toRect(), rect.toRect()) << radius;
        const double edge = want * (1 - std::sqrt(0.5)); // of a circle's arc, from both sides
        for (const QPointF& way : {QPointF(-1, -1), QPointF(1, -1), QPointF(1, 1), QPointF(-1, 1)}) {
            const QPointF corner =
                rect.center() + QPointF(way.x() * rect.width(), way.y() * rect.height()) / 2;
            EXPECT_TRUE(path.contains(corner - way * (edge + 0.1))) << radius;
            EXPECT_FALSE(path.contains(corner - way * (edge - 0.1))) << radius;
        }
    }
}

TEST(ContinuousRect, EasesBeforeACircleWouldBegin)
{
    const QPainterPath path = continuousRect({0, 0, 200, 200}, 20);
    EXPECT_TRUE(path.contains(QPointF(33, 0.01)));  // 1.6 radii: still the straight side
    EXPECT_FALSE(path.contains(QPointF(21, 0.05))); // a circle would begin here
}

class ShadowAtScale : public testing::TestWithParam<double> {
protected:
    void draw(const Shadow& shadow, const QRectF& shape, double corner)
    {
        image.setDevicePixelRatio(GetParam());
        image.fill(Qt::transparent);
        QPainter painter(&image);
        shadow.draw(painter, shape, corner);
    }
    int alphaAt(double x, double y) const
    {
        return image.pixelColor((QPointF(x, y) * GetParam() - QPointF(0.5, 0.5)).toPoint()).alpha();
    }
    QImage image{(QSizeF(400, 200) * GetParam()).toSize(), QImage::Format_ARGB32_Premultiplied};
};

// Far from the corners, a blurred edge is the Gaussian integral over the distance from it.
TEST_P(ShadowAtScale, FallsOffAsABlurDoes)
{
    draw({theme::black, 16, 4}, {60, 40, 280, 100}, 10);
    const double pixel = 1 / GetParam();
    for (int distance = -12; distance <= 16; distance += 2) { // outwards from the edge
        const double shown = distance + pixel / 2;
        const double want = 255 * 0.5 * std::erfc(shown / (8 * std::sqrt(2.0)));
        EXPECT_NEAR(alphaAt(200, 144 + shown), want, 3) << distance << " below";
        EXPECT_NEAR(alphaAt(340 + shown, 94), want, 3) << distance << " at the right";
    }
}

TEST_P(ShadowAtScale, IsAllWithinItsMargins)
{
    const Shadow shadow{theme::faded(theme::accent, 0.3), 12, 4};
    const QRect shape(100, 60, 37, 37); // smaller than the patch of a larger shape
    draw(shadow, shape, 12);
    const QRectF beyond = shape.marginsAdded(shadow.margins() + 1);
    const QPointF middle = QRectF(shape).center();
    for (const double x : {beyond.left(), beyond.right() - 0.5})
        EXPECT_LE(alphaAt(x + 0.3, middle.y()), 1) << x;
    for (const double y : {beyond.top(), beyond.bottom() - 0.5})
        EXPECT_LE(alphaAt(middle.x(), y + 0.3), 1) << y;
    EXPECT_GT(alphaAt(middle.x(), middle.y()), 40);
}

INSTANTIATE_TEST_SUITE_P(Scales, ShadowAtScale, testing::Values(1.0, 1.5, 2.0));

} // namespace
} // namespace folvane
