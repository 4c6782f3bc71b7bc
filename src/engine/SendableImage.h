#pragma once

#include <QImage>

namespace folvane {

/// A finished picture that leaves the engine's worker; nobody writes to its pixels any more.
struct SendableImage {
    QImage image; ///< 8 bits a channel in sRGB, opaque on white, device pixel ratio 1
};

/// The long side of a small picture in pixels, at most. It must be quick to make, and there are many of them.
inline constexpr int longestThumbnail = 600;

} // namespace folvane
