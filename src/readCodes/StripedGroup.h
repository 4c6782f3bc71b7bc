#pragma once

#include "readCodes/Orientations.h"

#include <vector>

namespace folvane {

/// How far the directions of what belongs together may differ, in radians.
constexpr double sameDirection = 0.14;

/// Cells that lie together and are striped in one direction.
struct StripedGroup {
    std::vector<cv::Point> cells;
    cv::Point2d direction; ///< that of all, as Orientations gives it

    /// In radians, across the stripes.
    double angle() const;
    bool hasDirection(cv::Point2d other) const;
    void add(const StripedGroup& other);
};

std::vector<StripedGroup> stripedGroups(const Orientations& orientations);

} // namespace folvane
