#pragma once

#include "pdf/images/StoredImage.h"

#include <stop_token>

namespace folvane::pdf {

/// What becomes of an image's colour space when its samples are stored anew.
enum class SpaceAfter {
    AsBefore, ///< kept, with its Decode array
    Base,     ///< that of the palette
    Device    ///< grey or RGB, as it comes out
};

struct ReadImage {
    StoredImage image;
    SpaceAfter space = SpaceAfter::AsBefore;
    QPDFObjectHandle base; ///< for SpaceAfter::Base
};

/// Takes an image out of its document. Nothing when it had better stay as it is: icons, stencils, colour keys, soft masks
/// whose colours are already mixed with a backdrop (Matte), what is broken, too large or not understood. Throws
/// Cancelled.
std::optional<ReadImage> readStoredImage(QPDFObjectHandle stream, StoredImage::Role role,
                                         const std::stop_token& stop);

} // namespace folvane::pdf
