#include "readCodes/stripes.h"

#include "readCodes/Orientations.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace folvane {

namespace {

/// Pixels of the copy that is looked at. Bars of two pixels are still seen when it is half as large as the picture.
constexpr int longSide = 1600;
constexpr int cellSide = 4;

struct Wanted {
    double coherence;
    double energy;
    double turn;         ///< in radians, how far the direction of a cell may be from that of all
    double share;        ///< of its rectangle, what must be striped
    double leastLength; ///< in cells
    double leastHeight;
};

constexpr Wanted bars{0.72, 60, 0.14, 0.6, 6, 2.5};
constexpr Wanted brokenBars{0.25, 400, 0.2, 0.6, 12, 3};

/// Cells that lie together and agree.
struct Group {
    std::vector<cv::Point> cells;
    cv::Point2d direction; ///< at twice the angle, with the weight of all

    double angle() const { return std::atan2(direction.y, direction.x) / 2; }
};

class Grouping {
public:
    Grouping(const Orientations& orientations, const Wanted& wanted)
        : m_orientations(orientations), m_wanted(wanted), m_taken(cv::Mat_<uchar>::zeros(orientations.size()))
    {
    }

    std::vector<Group> groups()
    {
        std::vector<Group> groups;
        cv::Point at;
        for (at.y = 0; at.y < m_taken.rows; ++at.y)
            for (at.x = 0; at.x < m_taken.cols; ++at.x)
                if (isFree(at))
                    groups.push_back(groupFrom(at));
        return groups;
    }

private:
    bool isFree(cv::Point at) const
    {
        return !m_taken(at) && m_orientations.energy(at) > m_wanted.energy
               && m_orientations.coherence(at) > m_wanted.coherence;
    }

    bool agrees(cv::Point at, const Group& group) const
    {
        const cv::Point2d way = m_orientations.direction(at);
        return way.dot(group.direction)
               > std::cos(2 * m_wanted.turn) * std::hypot(way.x, way.y)
                     * std::hypot(group.direction.x, group.direction.y);
    }

    void take(cv::Point at, Group& group)
    {
        m_taken(at) = 1;
        group.cells.push_back(at);
        group.direction += m_orientations.direction(at);
    }

    Group groupFrom(cv::Point start)
    {
        Group group;
        take(start, group);
        const cv::Rect all({}, m_taken.size());
        for (size_t next = 0; next < group.cells.size(); ++next)
            for (const cv::Point step : {cv::Point(1, 0), cv::Point(-1, 0), cv::Point(0, 1), cv::Point(0, -1)}) {
                const cv::Point at = group.cells[next] + step;
                if (all.contains(at) && isFree(at) && agrees(at, group))
                    take(at, group);
            }
        return group;
    }

    const Orientations& m_orientations;
    const Wanted& m_wanted;
    cv::Mat_<uchar> m_taken;
};

/// What lies between two ends.
struct Span {
    double from = 0, to = 0;

    double length() const { return to - from; }
    double middle() const { return (from + to) / 2; }
};

Span joined(const Span& a, const Span& b)
{
    return {std::min(a.from, b.from), std::max(a.to, b.to)};
}

double sharedOf(const Span& a, const Span& b)
{
    return std::min(a.to, b.to) - std::max(a.from, b.from);
}

/// A rectangle of cells by its sides, measured along its direction and across it.
struct Field {
    double angle = 0;
    Span along, across;
    double cells = 0; ///< how many of it are striped

    double area() const { return along.length() * across.length(); }
};

Span spanOf(const std::vector<cv::Point>& cells, double x, double y)
{
    Span span{1e9, -1e9};
    for (const cv::Point& cell : cells) {
        const double at = (cell.x + 0.5) * x + (cell.y + 0.5) * y;
        span = joined(span, {at - 0.5, at + 0.5});
    }
    return span;
}

Field fieldAround(const Group& group, double angle)
{
    const double x = std::cos(angle), y = std::sin(angle);
    return {angle, spanOf(group.cells, x, y), spanOf(group.cells, -y, x), double(group.cells.size())};
}

/// Whether one goes on where the other ends: wide bars and spaces split a code.
bool goesOn(const Field& a, const Field& b)
{
    const double gap = -sharedOf(a.along, b.along);
    const double widths = a.along.length() + b.along.length();
    return gap < std::max(4.0, 0.08 * widths)
           && sharedOf(a.across, b.across) > 0.6 * std::max(a.across.length(), b.across.length());
}

bool areOfOneDirection(const Group& a, const Group& b, double turn)
{
    return a.direction.dot(b.direction)
           > std::cos(2 * turn) * std::hypot(a.direction.x, a.direction.y) * std::hypot(b.direction.x, b.direction.y);
}

bool belongTogether(const Group& a, const Group& b, double turn)
{
    if (!areOfOneDirection(a, b, turn))
        return false;
    const double angle = Group{{}, a.direction + b.direction}.angle();
    return goesOn(fieldAround(a, angle), fieldAround(b, angle));
}

void join(Group& group, const Group& other)
{
    group.cells.insert(group.cells.end(), other.cells.begin(), other.cells.end());
    group.direction += other.direction;
}

/// With those that go on from one to the other as one.
std::vector<Group> joined(std::vector<Group> groups, double turn)
{
    for (auto one = groups.begin(); one != groups.end(); ++one)
        for (auto other = one + 1; other != groups.end();) {
            if (!belongTogether(*one, *other, turn)) {
                ++other;
                continue;
            }
            join(*one, *other);
            groups.erase(other);
            other = one + 1; // it may reach farther now
        }
    return groups;
}

cv::RotatedRect placeOf(const Field& field, double pixels)
{
    const double x = std::cos(field.angle), y = std::sin(field.angle);
    const double along = field.along.middle(), across = field.across.middle();
    return {cv::Point2f(float((along * x - across * y) * pixels), float((along * y + across * x) * pixels)),
            cv::Size2f(float(field.along.length() * pixels), float(field.across.length() * pixels)),
            float(field.angle * 180 / CV_PI)};
}

std::vector<cv::RotatedRect> found(const cv::Mat& picture, const Wanted& wanted)
{
    const double scale = std::min(1.0, double(longSide) / std::max(picture.cols, picture.rows));
    cv::Mat copy = picture;
    if (scale < 1)
        cv::resize(picture, copy, {}, scale, scale, cv::INTER_AREA);
    if (std::min(copy.cols, copy.rows) < 2 * cellSide)
        return {};
    const Orientations orientations(copy, cellSide);
    std::vector<Group> groups = Grouping(orientations, wanted).groups();
    std::erase_if(groups, [](const Group& group) { return group.cells.size() < 6; });
    std::vector<cv::RotatedRect> places;
    for (const Group& group : joined(std::move(groups), wanted.turn)) {
        const Field field = fieldAround(group, group.angle());
        if (field.along.length() >= wanted.leastLength && field.across.length() >= wanted.leastHeight && field.cells > wanted.share * field.area())
            places.push_back(placeOf(field, cellSide / scale));
    }
    return places;
}

} // namespace

std::vector<cv::RotatedRect> findStripes(const cv::Mat& picture)
{
    return found(picture, bars);
}

std::vector<cv::RotatedRect> findBrokenStripes(const cv::Mat& picture)
{
    return found(picture, brokenBars);
}

} // namespace folvane
