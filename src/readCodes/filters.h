#pragma once

#include "readCodes/Sightings.h"

namespace folvane {

/// Those that can be believed. Codes of bars, which print and pictures imitate, need enough characters and lines or the
/// agreement of both libraries, must not lie within an area code, and at one spot only the best of them stays. `stripes` are the
/// places that findStripes gave.
Symbols credible(std::vector<Sighting> sightings, const std::vector<cv::RotatedRect>& stripes);

} // namespace folvane
