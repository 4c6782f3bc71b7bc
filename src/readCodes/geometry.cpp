#include "readCodes/geometry.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace folvane {

namespace {

/// Libraries place one code differently, the more so the larger it is.
cv::Rect2f withRim(const cv::Rect2f& box)
{
    const float rim = 6 + 0.12F * std::max(box.width, box.height);
    return {box.x - rim, box.y - rim, box.width + 2 * rim, box.height + 2 * rim};
}

cv::Point2f middleOf(const cv::Rect2f& box)
{
    return {box.x + box.width / 2, box.y + box.height / 2};
}

cv::Point2f mapped(const cv::Matx23d& matrix, cv::Point2f point)
{
    const cv::Vec2d at = matrix * cv::Vec3d(point.x, point.y, 1);
    return {float(at[0]), float(at[1])};
}

} // namespace

cv::Rect2f boxAround(const std::vector<cv::Point2f>& points)
{
    const auto [left, right] = std::ranges::minmax(points, {}, &cv::Point2f::x);
    const auto [top, bottom] = std::ranges::minmax(points, {}, &cv::Point2f::y);
    return {left.x, top.y, right.x - left.x, bottom.y - top.y};
}

cv::Rect2f boxAround(const Quad& corners)
{
    return boxAround(std::vector(corners.begin(), corners.end()));
}

Quad cornersOf(const cv::Rect2f& box)
{
    return {box.tl(), cv::Point2f(box.x + box.width, box.y), box.br(),
            cv::Point2f(box.x, box.y + box.height)};
}

cv::Point2f middleOf(const Quad& corners)
{
    return (corners[0] + corners[1] + corners[2] + corners[3]) / 4;
}

bool isSameSpot(const Quad& a, const Quad& b)
{
    const cv::Rect2f boxA = boxAround(a);
    const cv::Rect2f boxB = boxAround(b);
    return withRim(boxA).contains(middleOf(boxB)) || withRim(boxB).contains(middleOf(boxA));
}

bool liesIn(cv::Point2f point, const Quad& corners)
{
    constexpr float rim = 1.05F;
    const cv::Point2f middle = middleOf(corners);
    std::vector<cv::Point2f> grown;
    for (const cv::Point2f& corner : corners)
        grown.push_back(middle + (corner - middle) * rim);
    std::vector<cv::Point2f> hull;
    cv::convexHull(grown, hull);
    return hull.size() >= 3 && cv::pointPolygonTest(hull, point, false) >= 0;
}

bool liesIn(cv::Point2f point, const cv::RotatedRect& rectangle)
{
    std::vector<cv::Point2f> corners(4);
    rectangle.points(corners.data());
    return cv::pointPolygonTest(corners, point, false) >= 0;
}

double lengthAlong(const cv::RotatedRect& rectangle, const Quad& corners)
{
    const double angle = double(rectangle.angle) * CV_PI / 180;
    const cv::Point2d along(std::cos(angle), std::sin(angle));
    const auto reach = [along](cv::Point2f corner) { return along.dot(corner); };
    const auto [near, far] = std::ranges::minmax(corners, {}, reach);
    return reach(far) - reach(near);
}

double overlapOf(const cv::RotatedRect& a, const cv::RotatedRect& b)
{
    std::vector<cv::Point2f> shared;
    if (cv::rotatedRectangleIntersection(a, b, shared) == cv::INTERSECT_NONE || shared.size() < 3)
        return 0;
    std::vector<cv::Point2f> hull;
    cv::convexHull(shared, hull);
    const double area = cv::contourArea(hull);
    return area / (double(a.size.area()) + double(b.size.area()) - area);
}

Symbols carriedBack(Symbols symbols, const cv::Matx23d& toPicture)
{
    for (Symbol& symbol : symbols)
        for (cv::Point2f& corner : symbol.corners)
            corner = mapped(toPicture, corner);
    return symbols;
}

cv::Matx23d fromScaled(double scale)
{
    // Pixels have their middles at whole numbers, so half a pixel is added and taken away.
    const double shift = 0.5 / scale - 0.5;
    return {1 / scale, 0, shift, 0, 1 / scale, shift};
}

} // namespace folvane
