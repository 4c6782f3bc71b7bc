#pragma once

#include <QtGlobal>

namespace folvane {

/// The largest decoded bitmap: a picture above it counts as one that cannot be decoded.
inline constexpr qint64 maxBitmapBytes = qint64(1) << 30;

/// The most memory that decoding one picture may take, with all that stands beside the bitmap meanwhile.
inline constexpr qint64 maxDecodingBytes = qint64(1200) << 20;

} // namespace folvane
