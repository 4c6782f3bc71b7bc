#include "tools/sign/stampDrags.h"

#include <QLineF>

#include <algorithm>
#include <cmath>

namespace folvane {

namespace {

constexpr double narrowest = 0.03, widest = 1.2; // of the page's width
constexpr double catchOfQuarters = 4;            // degrees

QPointF centerOn(QSizeF page, const StampPlacement& stamp)
{
    return {stamp.center.x() * page.width(), stamp.center.y() * page.height()};
}

double degreesTo(QPointF from, QPointF to)
{
    return std::atan2(to.y() - from.y(), to.x() - from.x()) * 180 / M_PI;
}

double snapped(double angle)
{
    for (const double quarter : {-180.0, -90.0, 0.0, 90.0, 180.0})
        if (std::abs(angle - quarter) < catchOfQuarters)
            angle = quarter;
    return angle;
}

} // namespace

double reachableWidth(double width)
{
    return std::clamp(width, narrowest, widest);
}

double wrappedAngle(double degrees)
{
    return std::fmod(degrees + 540, 360) - 180;
}

StampPlacement movedStamp(StampPlacement start, QSizeF page, QPointF from, QPointF to)
{
    const QPointF way = to - from;
    start.center = {std::clamp(start.center.x() + way.x() / page.width(), 0.0, 1.0),
                    std::clamp(start.center.y() + way.y() / page.height(), 0.0, 1.0)};
    return start;
}

StampPlacement resizedStamp(StampPlacement start, QSizeF page, QPointF from, QPointF to)
{
    const QPointF center = centerOn(page, start);
    const double before = QLineF(center, from).length();
    if (before > 1)
        start.width = reachableWidth(start.width * QLineF(center, to).length() / before);
    return start;
}

StampPlacement turnedStamp(StampPlacement start, QSizeF page, QPointF from, QPointF to)
{
    const QPointF center = centerOn(page, start);
    start.rotation = snapped(wrappedAngle(start.rotation + degreesTo(center, to) - degreesTo(center, from)));
    return start;
}

} // namespace folvane
