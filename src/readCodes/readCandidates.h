#pragma once

#include "readCodes/Sightings.h"

namespace folvane {

/// Looks closely at each place that may hold a code which nobody has seen yet: set upright, at a good size, with full
/// contrast, also blurred and inverted.
void readCandidates(const cv::Mat& picture, Sightings& sightings);

} // namespace folvane
