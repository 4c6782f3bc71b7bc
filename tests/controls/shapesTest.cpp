#include "controls/pictures.h"
#include "controls/style/Shadow.h"
#include "controls/style/continuousRect.h"

#include <QPainter>

#include <array>
#include <cmath>
#include <tuple>

namespace folvane {
namespace {

struct CornerCase {
    const char* name;
    QRectF rect;
    double radius;
    double want; // the radius that the shape has in the middle of its corners
};
class ContinuousRect : public testing::TestWithParam<CornerCase> {};

TEST_P(ContinuousRect, KeepsItsRadiusAndItsBounds)
{
    const QRectF rect = GetParam().rect;
    const QPainterPath path = continuousRect(rect, GetParam().radius);
    EXPECT_EQ(path.boundingRect().toRect(), rect.toRect());
    const double edge = GetParam().want * (1 - std::sqrt(0.5)); // of a circle's arc, from both sides
    const std::array corners{std::tuple(rect.topLeft(), 1, 1), std::tuple(rect.topRight(), -1, 1),
                             std::tuple(rect.bottomRight(), -1, -1), std::tuple(rect.bottomLeft(), 1, -1)};
    for (const auto& [corner, x, y] : corners) {
        const QPointF inwards(x, y);
        EXPECT_TRUE(path.contains(corner + inwards * (edge + 0.1)));
        EXPECT_FALSE(path.contains(corner + inwards * (edge - 0.1)));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ContinuousRect,
    testing::Values(CornerCase{"Panel", {10, 20, 300, 200}, 18, 18},
                    CornerCase{"Icon", {0, 0, 100, 100}, 22.37, 22.37},
                    CornerCase{"Tight", {0.5, 0.5, 120, 36}, 12, 12}, // no room for all of the easing
                    CornerCase{"TooRound", {0, 0, 100, 30}, 400, 15},
                    CornerCase{"Sharp", {0, 0, 100, 30}, 0, 0}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ContinuousRectEasing, BeginsBeforeTheCircle)
{
    const QPainterPath path = continuousRect({0, 0, 200, 200}, 20);
    EXPECT_TRUE(path.contains(QPointF(33, 0.01)));  // 1.6 radii: still the straight side
    EXPECT_FALSE(path.contains(QPointF(21, 0.05))); // a circle would begin here
}

class ShadowAtScale : public testing::TestWithParam<double> {
protected:
    QImage drawn(const Shadow& shadow, const QRectF& shape, double corner) const
    {
        QImage image((QSizeF(400, 200) * GetParam()).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(GetParam());
        image.fill(Qt::transparent);
        QPainter painter(&image);
        shadow.draw(painter, shape, corner);
        return image;
    }
};

// Far from the corners, a blurred edge is the Gaussian integral over the distance from it.
TEST_P(ShadowAtScale, FallsOffAsABlurDoes)
{
    const QRectF shape(60, 40, 280, 100);
    const QImage image = drawn({theme::black, 16, 4}, shape, 10);
    const double pixel = 1 / GetParam();
    for (int distance = -12; distance <= 16; distance += 2) { // outwards from the edge
        const double shown = distance + pixel / 2;
        const double want = 255 * 0.5 * std::erfc(shown / (8 * std::sqrt(2.0)));
        EXPECT_NEAR(colorAt(image, {200, 144 + distance + pixel / 4}).alpha(), want, 3)
            << distance << " below";
        EXPECT_NEAR(colorAt(image, {340 + distance + pixel / 4, 94}).alpha(), want, 3)
            << distance << " at the right";
    }
}

TEST_P(ShadowAtScale, IsAllWithinItsMargins)
{
    const Shadow shadow{theme::faded(theme::accent, 0.3), 12, 4};
    const QRect shape(100, 60, 37, 37); // smaller than the patch of a larger shape
    const QImage image = drawn(shadow, shape, 12);
    const QRect room = shape.marginsAdded(shadow.margins());
    int strongest = 0;
    for (int y = 0; y < 200; ++y) {
        for (int x = 0; x < 400; ++x) {
            if (!room.contains(x, y))
                strongest = std::max(strongest, colorAt(image, {x + 0.01, y + 0.01}).alpha());
        }
    }
    EXPECT_LE(strongest, 1);
    EXPECT_GT(colorAt(image, QRectF(shape).center()).alpha(), 40);
}

INSTANTIATE_TEST_SUITE_P(Scales, ShadowAtScale, testing::Values(1.0, 1.5, 2.0));

} // namespace
} // namespace folvane
