#pragma once

#include "readCodes/Sightings.h"

namespace folvane {

/// Whether everything can be looked for everywhere in reasonable time.
bool isSmall(const cv::Mat& picture);

/// What both libraries see in the picture as it is. zxing-cpp takes long to look for Aztec and Data Matrix codes in a large
/// one, so these are left to the candidates.
void readWholePicture(const cv::Mat& picture, Sightings& sightings);

} // namespace folvane
