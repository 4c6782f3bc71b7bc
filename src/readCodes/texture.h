#pragma once

#include "readCodes/families.h"

#include <opencv2/core.hpp>

namespace folvane {

/// What a patch looks like, without reading it.
struct Texture {
    double stripes =
        1; ///< change along the long side by change across it; above 1 for stripes, about 1 for a matrix
    double energy = 0;   ///< mean change from pixel to pixel, in grey levels
    double darkness = 0; ///< share of its area that is dark, about a half in all codes
};

Texture textureOf(const cv::Mat& patch);

/// What a place of that texture may be, but for linear codes.
Families familiesFor(const Texture& texture, const cv::RotatedRect& place);

} // namespace folvane
