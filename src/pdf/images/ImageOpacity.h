#pragma once

#include "pictures/ImageSamples.h"

namespace folvane::pdf {

/// Tells row by row how opaque the pixels of a picture are, from a mask that may have any other size.
class ImageOpacity {
public:
    /// `mask` has one channel. Inverted: 0 means opaque.
    ImageOpacity(ImageSamples mask, bool inverted);

    /// One byte a pixel for row `y` of a picture of that size; valid until the next call.
    const uint8_t* row(int y, QSize picture);

private:
    ImageSamples m_mask;
    std::vector<uint8_t> m_row;
};

} // namespace folvane::pdf
