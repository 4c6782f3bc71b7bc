#pragma once

#include "readCodes/Sightings.h"

namespace folvane {

/// The picture at half its size, which takes grain and the pattern of a screen away.
void readHalved(const cv::Mat& picture, Sightings& sightings);

} // namespace folvane
