#pragma once

#include "readCodes/Sightings.h"

namespace folvane {

/// Looks for an Aztec code around each bullseye: the library finds it only in the very middle of a picture.
void readBullseyes(const cv::Mat& picture, Sightings& sightings);

} // namespace folvane
