#include "controls/BrandMark.h"
#include "controls/pictures.h"
#include "controls/sheets/Panel.h"
#include "controls/style/Shadow.h"
#include "controls/style/continuousRect.h"
#include "controls/style/visualMargin.h"

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
    EXPECT_NEAR(path.boundingRect().left(), rect.left(), 1e-6);
    EXPECT_NEAR(path.boundingRect().top(), rect.top(), 1e-6);
    EXPECT_NEAR(path.boundingRect().width(), rect.width(), 1e-6);
    EXPECT_NEAR(path.boundingRect().height(), rect.height(), 1e-6);
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
                    CornerCase{"Capsule", {0, 0, 100, 30}, 15, 15},
                    CornerCase{"TooRound", {0, 0, 100, 30}, 400, 15},
                    CornerCase{"Sharp", {0, 0, 100, 30}, 0, 0}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ContinuousRectEasing, BeginsBeforeTheCircleAndStaysInsideIt)
{
    const QPainterPath path = continuousRect({0, 0, 200, 200}, 20);
    EXPECT_TRUE(path.contains(QPointF(33, 0.01)));  // 1.6 radii: still the straight side
    EXPECT_FALSE(path.contains(QPointF(21, 0.05))); // a circle would begin here
    QPainterPath circular;
    circular.addRoundedRect(0, 0, 200, 200, 20, 20);
    const QTransform smaller =
        QTransform::fromTranslate(100, 100).scale(0.9995, 0.9995).translate(-100, -100);
    for (int i = 0; i < 1000; ++i)
        ASSERT_TRUE(circular.contains(smaller.map(path.pointAtPercent(i / 1000.0)))) << i;
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

TEST_P(ShadowAtScale, HasNoSeams)
{
    const QImage image = drawn({theme::black, 12, 4}, {40, 30, 320, 120}, 18);
    const int row = static_cast<int>(28 * GetParam());
    for (int x = static_cast<int>(120 * GetParam()); x < 280 * GetParam(); ++x)
        ASSERT_EQ(image.pixel(x, row), image.pixel(x + 1, row)) << x;
    const int middle = image.width();
    for (int x = 0; x < middle / 2; ++x)
        ASSERT_NEAR(qAlpha(image.pixel(x, row)), qAlpha(image.pixel(middle - 1 - x, row)), 1) << x;
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

TEST(PanelLook, IsASurfaceOverASoftShadow)
{
    Panel panel;
    panel.resize(300, 200);
    for (const double scale : {1.0, 2.0}) {
        const QImage image = picture(panel, scale);
        const QRectF surface = panel.rect().marginsRemoved(visualMargin(panel));
        EXPECT_EQ(colorAt(image, {0, 0}).alpha(), 0);
        EXPECT_TRUE(alike(colorAt(image, surface.center()), theme::surface, 0));
        EXPECT_TRUE(alike(colorAt(image, {surface.center().x(), surface.top() + 0.5}), theme::surface, 0));
        EXPECT_NEAR(colorAt(image, {surface.center().x(), surface.bottom() + 4.5}).alpha(), 255 * 0.05 / 2,
                    2);
        EXPECT_LT(colorAt(image, surface.topLeft() + QPointF(3, 3)).alpha(), 20); // cut off by the corner
    }
}

TEST(BrandMarkLook, GrowsInProportion)
{
    for (const int size : {24, 56, 96}) {
        BrandMark mark(size);
        const QImage image = picture(mark, 2);
        const QRectF square = mark.rect().marginsRemoved(visualMargin(mark));
        EXPECT_EQ(square.size(), QSizeF(size, size));
        EXPECT_EQ(colorAt(image, square.center() - QPointF(0, size * 0.46)).alpha(), 255);
        const double corner = 0.2237 * size * (1 - std::sqrt(0.5));
        EXPECT_EQ(colorAt(image, square.topLeft() + QPointF(corner + 1, corner + 1)).alpha(), 255) << size;
        EXPECT_LT(colorAt(image, square.topLeft() + QPointF(corner - 1.5, corner - 1.5)).alpha(), 80) << size;
        const QColor below = colorAt(image, {square.center().x(), square.bottom() + 0.06 * size + 0.25});
        EXPECT_TRUE(alike(below, at(0.15, theme::accent), 5)) << size; // half of the shadow at its edge
    }
}

} // namespace
} // namespace folvane
