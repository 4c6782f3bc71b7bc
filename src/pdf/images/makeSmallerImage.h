#pragma once

#include "pdf/images/ImageCache.h"
#include "pdf/images/StoredImage.h"

#include <stop_token>

namespace folvane::pdf {

/// What an image shall become.
struct ImageTarget {
    int maxPixels = 0; ///< of the long side
    int quality = 0;   ///< of JPEG, 1 to 100
};

/// What makeSmallerImage() takes at most while it works, beside the stored image, in bytes.
qint64 makingMemory(const StoredImage& image, ImageTarget target);

/// Pictures become JPEG; soft masks only where they are JPEG already, and else are scaled and deflated. Nothing when the
/// result would not be smaller than what is stored, when the image is broken, or when stopped. The result depends on the
/// image and the target alone, not on what the cache holds. On any thread.
std::optional<SmallerImage> makeSmallerImage(const StoredImage& image, ImageTarget target, ImageCache& cache,
                                             const std::stop_token& stop);

} // namespace folvane::pdf
