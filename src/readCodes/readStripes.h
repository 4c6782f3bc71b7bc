#pragma once

#include "readCodes/Sightings.h"

namespace folvane {

/// Looks for linear codes along each place that is striped, at any angle.
void readStripes(const cv::Mat& picture, Sightings& sightings);

} // namespace folvane
