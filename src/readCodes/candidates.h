#pragma once

#include <opencv2/core.hpp>

#include <vector>

namespace folvane {

/// Places of a picture, at any angle, that look as if a code filled them: dark or full of edges, about rectangular. The most
/// striking come first.
std::vector<cv::RotatedRect> findCandidates(const cv::Mat& picture);

double longSideOf(const cv::RotatedRect& place);
/// Long side by short side.
double aspectOf(const cv::RotatedRect& place);

} // namespace folvane
