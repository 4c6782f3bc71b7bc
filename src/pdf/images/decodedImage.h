#pragma once

#include "pdf/images/StoredImage.h"

#include <stop_token>

namespace folvane::pdf {

/// The samples of an image, scaled so that its long side is at most `longest`; palettes are resolved, and pixels that no
/// mask lets see have the colours of their neighbours. Nothing when it is broken, or stopped. On any thread.
std::optional<ImageSamples> decodedImage(const StoredImage& image, int longest, const std::stop_token& stop);

} // namespace folvane::pdf
