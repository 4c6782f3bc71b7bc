#pragma once

namespace folvane {

/// One rung of the compression ladder.
struct CompressionStep {
    int maxPixels = 0;            ///< limit on the long side of pictures, in pixels
    double jpegQuality = 0;       ///< 0 to 1
    bool pagesAsPictures = false; ///< whole pages are redrawn as pictures

    bool operator==(const CompressionStep&) const = default;
};

} // namespace folvane
