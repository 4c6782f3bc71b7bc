#pragma once

#include "pictures/ImageSamples.h"
#include "pictures/pictures.h"

namespace folvane {

/// A picture of any kind that can be decoded as four channels (see liftInk()), upright, its long side at most `longest`.
/// Nothing when it cannot be decoded, and soon after a stop.
std::optional<ImageSamples> stampPicture(PictureBytes content, const QString& extension, int longest,
                                         const std::stop_token& stop = {});

} // namespace folvane
