#pragma once

#include "pictures/formats/TaggedImage.h"

#include <optional>

namespace folvane {

/// The primary picture of a HEIC or AVIF file, or nothing.
std::optional<TaggedImage> decodeHeif(const QByteArray& bytes);

} // namespace folvane
