#pragma once

#include "readCodes/Sightings.h"

namespace folvane {

/// Looks for linear codes along each place that is striped, as findStripes gave them.
void readStripes(const cv::Mat& picture, const std::vector<cv::RotatedRect>& stripes, Sightings& sightings);

} // namespace folvane
