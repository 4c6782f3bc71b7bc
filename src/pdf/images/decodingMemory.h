#pragma once

#include "pdf/images/StoredImage.h"

namespace folvane::pdf {

/// What decodedImage() takes while it works, with its result, in bytes.
qint64 decodingMemory(const StoredImage& image, int longest);

/// Bytes of the image as it is stored, with those of its mask.
qint64 storedMemory(const StoredImage& image);

} // namespace folvane::pdf
