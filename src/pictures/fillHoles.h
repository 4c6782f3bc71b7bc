#pragma once

#include "pictures/ImageSamples.h"

#include <stop_token>

namespace folvane {

/// Gives pixels whose colour nobody sees (`holes`, one byte a pixel, not 0 for such) the colour of what lies around
/// them, so that lossy coding does not carry an edge of theirs into what is seen. A picture that is one hole stays. Of no
/// use after a stop.
void fillHoles(ImageSamples& samples, const std::vector<uint8_t>& holes, const std::stop_token& stop);

} // namespace folvane
