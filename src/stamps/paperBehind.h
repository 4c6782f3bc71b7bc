#pragma once

#include "pictures/ImageSamples.h"

#include <stop_token>

namespace folvane {

/// The colour of the paper behind each pixel, shadows and uneven light included: within a radius of a 120th of the long side
/// (at least 3 pixels) the brightest value of each channel wins, so that strokes thinner than that vanish, and a Gaussian
/// blur of twice that deviation makes it vary smoothly, edges replicated. `picture`: four channels (see liftInk()); the paper
/// has three, for its alpha would tell nothing. Throws Cancelled.
ImageSamples paperBehind(const ImageSamples& picture, const std::stop_token& stop);

} // namespace folvane
