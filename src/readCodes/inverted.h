#pragma once

#include "readCodes/Sightings.h"

namespace folvane {

/// Bright codes on a dark ground.
void readInverted(const cv::Mat& picture, Sightings& sightings);

} // namespace folvane
