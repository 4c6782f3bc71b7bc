#include "readCodes/stripes.h"

#include "readCodes/StripedGroup.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <optional>

namespace folvane {

namespace {

/// Pixels of the copy that is looked at, and of its cells.
constexpr int longSide = 1600;
constexpr int cellSide = 4;

/// Only so many of the largest groups are joined, which takes the square of their number.
constexpr size_t mostGroups = 300;
constexpr size_t mostPlaces = 120;

/// In cells.
constexpr size_t leastCells = 6;
constexpr double leastLength = 6;
constexpr double leastHeight = 2.5;
constexpr double leastFilled = 0.6; ///< of its rectangle

/// What lies between two ends.
struct Span {
    double from = 1e9, to = -1e9;

    double length() const { return to - from; }
    double middle() const { return (from + to) / 2; }
};

Span joined(const Span& a, const Span& b)
{
    return {std::min(a.from, b.from), std::max(a.to, b.to)};
}

/// Negative when there is a gap.
double sharedOf(const Span& a, const Span& b)
{
    return std::min(a.to, b.to) - std::max(a.from, b.from);
}

/// A rectangle of cells by its sides, measured in a direction and across it.
struct Field {
    double angle = 0;
    Span along, across;

    double area() const { return along.length() * across.length(); }
};

Span spanOf(const std::vector<cv::Point>& cells, double x, double y)
{
    Span span;
    for (const cv::Point& cell : cells) {
        const double at = (cell.x + 0.5) * x + (cell.y + 0.5) * y;
        span = joined(span, {at - 0.5, at + 0.5});
    }
    return span;
}

Field fieldAround(const StripedGroup& group, double angle)
{
    const double x = std::cos(angle);
    const double y = std::sin(angle);
    return {angle, spanOf(group.cells, x, y), spanOf(group.cells, -y, x)};
}

/// Wide bars and spaces split a code, quiet zones part two.
bool goesOn(const Field& a, const Field& b)
{
    const double gap = -sharedOf(a.along, b.along);
    return gap < std::max(4.0, 0.08 * (a.along.length() + b.along.length()))
           && sharedOf(a.across, b.across) > 0.6 * std::max(a.across.length(), b.across.length());
}

bool belongTogether(const StripedGroup& a, const StripedGroup& b)
{
    if (!a.hasDirection(b.direction))
        return false;
    const double angle = StripedGroup{{}, a.direction + b.direction}.angle();
    return goesOn(fieldAround(a, angle), fieldAround(b, angle));
}

std::vector<StripedGroup> largest(std::vector<StripedGroup> groups)
{
    std::erase_if(groups, [](const StripedGroup& group) { return group.cells.size() < leastCells; });
    std::ranges::sort(groups, std::ranges::greater(),
                      [](const StripedGroup& group) { return group.cells.size(); });
    groups.resize(std::min(groups.size(), mostGroups));
    return groups;
}

/// With those that go on from one to the other as one.
std::vector<StripedGroup> joined(std::vector<StripedGroup> groups)
{
    for (auto one = groups.begin(); one != groups.end(); ++one)
        for (auto other = one + 1; other != groups.end();) {
            if (!belongTogether(*one, *other)) {
                ++other;
                continue;
            }
            one->add(*other);
            groups.erase(other);
            other = one + 1; // it may reach farther now
        }
    return groups;
}

cv::RotatedRect placeOf(const Field& field, double pixels)
{
    const double x = std::cos(field.angle) * pixels;
    const double y = std::sin(field.angle) * pixels;
    const double along = field.along.middle();
    const double across = field.across.middle();
    return {cv::Point2f(float(along * x - across * y), float(along * y + across * x)),
            cv::Size2f(float(field.along.length() * pixels), float(field.across.length() * pixels)),
            float(field.angle * 180 / CV_PI)};
}

std::optional<cv::RotatedRect> codeLikePlace(const StripedGroup& group, double pixels)
{
    const Field field = fieldAround(group, group.angle());
    if (field.along.length() < leastLength || field.across.length() < leastHeight
        || double(group.cells.size()) < leastFilled * field.area())
        return std::nullopt;
    return placeOf(field, pixels);
}

} // namespace

std::vector<cv::RotatedRect> findStripes(const cv::Mat& picture)
{
    const double scale = std::min(1.0, double(longSide) / std::max(picture.cols, picture.rows));
    cv::Mat copy = picture;
    if (scale < 1)
        cv::resize(picture, copy, {}, scale, scale, cv::INTER_AREA);
    std::vector<cv::RotatedRect> places;
    for (const StripedGroup& group : joined(largest(stripedGroups(Orientations(copy, cellSide)))))
        if (const auto place = codeLikePlace(group, cellSide / scale); place && places.size() < mostPlaces)
            places.push_back(*place);
    return places;
}

} // namespace folvane
