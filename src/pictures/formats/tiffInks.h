#pragma once

#include "pictures/formats/InkSamples.h"

#include <optional>
#include <stop_token>

namespace folvane {

/// The picture of that number in a TIFF file, if its samples are process inks, which Qt's reader does not take. Nothing
/// for other pictures, when it cannot be decoded, and soon after a stop.
std::optional<InkSamples> decodeTiffInks(const QByteArray& bytes, int index, const std::stop_token& stop);

} // namespace folvane
