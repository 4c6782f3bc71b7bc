#include "readCodes/StripedGroup.h"

#include <cmath>

namespace folvane {

namespace {

/// Of bars of two pixels under the grain of print, and hardly of letters.
constexpr double leastCoherence = 0.72;
constexpr double leastEnergy = 60;

class Grouping {
public:
    explicit Grouping(const Orientations& orientations)
        : m_orientations(orientations), m_taken(cv::Mat_<uchar>::zeros(orientations.size()))
    {
    }

    std::vector<StripedGroup> groups()
    {
        std::vector<StripedGroup> groups;
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
        return !m_taken(at) && m_orientations.energy(at) > leastEnergy
               && m_orientations.coherence(at) > leastCoherence;
    }

    void take(cv::Point at, StripedGroup& group)
    {
        m_taken(at) = 1;
        group.cells.push_back(at);
        group.direction += m_orientations.direction(at);
    }

    StripedGroup groupFrom(cv::Point start)
    {
        StripedGroup group;
        take(start, group);
        for (size_t next = 0; next < group.cells.size(); ++next)
            for (const cv::Point step :
                 {cv::Point(1, 0), cv::Point(-1, 0), cv::Point(0, 1), cv::Point(0, -1)})
                takeIfAlike(group.cells[next] + step, group);
        return group;
    }

    void takeIfAlike(cv::Point at, StripedGroup& group)
    {
        if (cv::Rect({}, m_taken.size()).contains(at) && isFree(at)
            && group.hasDirection(m_orientations.direction(at)))
            take(at, group);
    }

    const Orientations& m_orientations;
    cv::Mat_<uchar> m_taken;
};

} // namespace

double StripedGroup::angle() const
{
    return std::atan2(direction.y, direction.x) / 2;
}

bool StripedGroup::hasDirection(cv::Point2d other) const
{
    const double lengths = std::hypot(direction.x, direction.y) * std::hypot(other.x, other.y);
    return direction.dot(other) > std::cos(2 * sameDirection) * lengths;
}

void StripedGroup::add(const StripedGroup& other)
{
    cells.insert(cells.end(), other.cells.begin(), other.cells.end());
    direction += other.direction;
}

std::vector<StripedGroup> stripedGroups(const Orientations& orientations)
{
    return Grouping(orientations).groups();
}

} // namespace folvane
