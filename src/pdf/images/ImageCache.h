#pragma once

#include "pdf/images/SmallerImage.h"
#include "pictures/BoundedCache.h"
#include "pictures/ImageSamples.h"

#include <optional>

namespace folvane::pdf {

/// What builds of the same pages will want again, by keys that name all that it depends on. 512 MB at most.
struct ImageCache {
    /// Decoded pictures at the largest size that any build needs.
    BoundedCache<ImageSamples> samples{448U << 20, WhenFull::NewestLeaves};
    /// What became of an image at one step; nothing where it stayed. Some documents hold a picture many times over.
    BoundedCache<std::optional<SmallerImage>> smaller{64U << 20};

    void clear()
    {
        samples.clear();
        smaller.clear();
    }
};

} // namespace folvane::pdf
