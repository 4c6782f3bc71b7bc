#pragma once

#include <opencv2/core.hpp>

#include <vector>

namespace folvane {

/// Places of a picture where brightness changes in one direction only, as in a linear code: the width of each goes along
/// that direction, across the bars.
std::vector<cv::RotatedRect> findStripes(const cv::Mat& picture);

} // namespace folvane
