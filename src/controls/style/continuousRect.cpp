#include "controls/style/continuousRect.h"

#include <QLineF>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace folvane {

namespace {

constexpr double smoothing = 0.6; // part of the quarter turn that is easing and no circle

// One corner, turned so that the path comes from the left along the top side and leaves down the right side.
// All lengths are along the sides. An arc of a circle stands in the middle; before and after it a cubic
// curve whose first control points lie on the side (no curvature there) and whose last one lies on the arc's tangent.
struct Corner {
    double reach; // from where the curve begins to the corner
    double first; // from the beginning to the first control point
    double
        second; // from the first to the second control point, which is where the tangent of the arc meets the side
    double along;  // from there to the beginning of the arc, along the side …
    double across; // … and away from it
    double radius;
    double arc; // degrees
};

Corner cornerFor(double radius, double room)
{
    const double reach = std::min((1 + smoothing) * radius, room);
    const double eased = radius > 0 ? std::clamp(reach / radius - 1, 0.0, smoothing) : 0;
    const double turn = std::numbers::pi / 4 * eased; // that each of the two cubics makes
    const double chord = 2 * radius * std::sin(std::numbers::pi / 4 - turn) / std::numbers::sqrt2;
    const double tangent = radius * std::tan(turn / 2);
    const double along = tangent * std::cos(turn);
    const double across = tangent * std::sin(turn);
    const double left = reach - chord - along - across;
    return {reach, left * 2 / 3, left / 3, along, across, radius, 90 * (1 - eased)};
}

void addCorner(QPainterPath& path, const Corner& c, const QPointF& tip, int quarter)
{
    const QTransform turned = QTransform::fromTranslate(tip.x(), tip.y()).rotate(90 * quarter);
    const auto at = [&turned](double x, double y) { return turned.map(QPointF(x, y)); };
    const double arcX = -c.reach + c.first + c.second + c.along;
    path.lineTo(at(-c.reach, 0));
    path.cubicTo(at(-c.reach + c.first, 0), at(-c.reach + c.first + c.second, 0), at(arcX, c.across));
    const QPointF center = at(-c.radius, c.radius);
    const QRectF circle(center - QPointF(c.radius, c.radius), QSizeF(2 * c.radius, 2 * c.radius));
    path.arcTo(circle, 45 + c.arc / 2 - 90 * quarter, -c.arc);
    path.cubicTo(at(0, c.reach - c.first - c.second), at(0, c.reach - c.first), at(0, c.reach));
}

} // namespace

QPainterPath continuousRect(const QRectF& rect, double radius)
{
    const double room = std::min(rect.width(), rect.height()) / 2;
    const Corner corner = cornerFor(std::clamp(radius, 0.0, std::max(room, 0.0)), room);
    QPainterPath path(QPointF(rect.left() + corner.reach, rect.top()));
    addCorner(path, corner, rect.topRight(), 0);
    addCorner(path, corner, rect.bottomRight(), 1);
    addCorner(path, corner, rect.bottomLeft(), 2);
    addCorner(path, corner, rect.topLeft(), 3);
    path.closeSubpath();
    return path;
}

} // namespace folvane
