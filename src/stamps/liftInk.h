#pragma once

#include "pictures/ImageSamples.h"

#include <stop_token>

// Pictures of stamps have four channels, red, green, blue and alpha, in sRGB, the colours premultiplied by alpha. All
// arithmetic acts on these values as they are: nothing is linear light.

namespace folvane {

/// More than 2 % of the pixels can be seen through: somebody has cut the picture out already.
bool hasTransparency(const ImageSamples& pixels);

/// Divides the paper out, makes what remains as opaque as it is dark, and takes the white out of its colour: a pixel less
/// than 12 % darker than its paper vanishes, one 42 % darker keeps its colour, those between ramp smoothly. Over white all
/// look as they did. `paper` is as large, in three channels. Throws Cancelled.
ImageSamples liftInk(ImageSamples pixels, ImageSamples paper, const std::stop_token& stop);

} // namespace folvane
