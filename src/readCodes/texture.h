#pragma once

#include "readCodes/families.h"

#include <opencv2/core.hpp>

namespace folvane {

/// What a patch looks like, without reading it.
struct Texture {
    double stripes =
        1; ///< change along the long side by change across it; above 1 for stripes, about 1 for a matrix
    double energy = 0; ///< mean change from pixel to pixel, in grey levels
};

Texture textureOf(const cv::Mat& patch);

/// What a patch of that texture and aspect may be.
Families familiesFor(const Texture& texture, double aspect);

} // namespace folvane
