#pragma once

#include <opencv2/core.hpp>

#include <vector>

namespace folvane {

/// Places of a picture where brightness changes in one direction only, as in a linear code: the width of each goes along
/// that direction, across the bars. The largest come first.
std::vector<cv::RotatedRect> findStripes(const cv::Mat& picture);

/// Places where it mostly does, as in PDF417.
std::vector<cv::RotatedRect> findBrokenStripes(const cv::Mat& picture);

} // namespace folvane
