#pragma once

#include "pictures/ImageSamples.h"

#include <QRect>

#include <optional>

namespace folvane {

/// Where the ink is, with a margin of a 40th of its long side (at least 4 pixels), and cut off at the picture's edges. Lines
/// with fewer than 3 dark pixels are dust. Nothing when the ink spans fewer than 9 pixels either way. `pixels`: see liftInk().
std::optional<QRect> inkBox(const ImageSamples& pixels);

/// That part of the picture, its long side at most `longest`: averaged over areas, and never larger than it was.
ImageSamples cutOut(const ImageSamples& pixels, QRect box, int longest);

} // namespace folvane
