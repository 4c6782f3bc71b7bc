#pragma once

#include <opencv2/core.hpp>

#include <vector>

namespace folvane {

/// The squares within squares in the middle of an Aztec code.
struct Bullseye {
    cv::Point2f middle;
    double module = 0; ///< in pixels
    double angle = 0;  ///< of its sides, in degrees, from -45 to 45
};

std::vector<Bullseye> findBullseyes(const cv::Mat& picture);

} // namespace folvane
