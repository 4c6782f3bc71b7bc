#pragma once

#include "readCodes/Sightings.h"

namespace folvane {

/// Twice as wide and high.
cv::Mat doubled(const cv::Mat& picture);

/// A small picture at twice its size, which brings out modules of hardly more than a pixel, and the same sharpened, against
/// a blurred photograph.
void readDoubled(const cv::Mat& picture, Sightings& sightings);

} // namespace folvane
