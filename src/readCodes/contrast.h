#pragma once

#include <opencv2/core.hpp>

namespace folvane {

/// With faint greys spread over the whole range. Empty when there is nothing to spread.
cv::Mat withFullContrast(const cv::Mat& grey);

} // namespace folvane
