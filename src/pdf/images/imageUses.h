#pragma once

#include "pdf/images/StoredImage.h"

#include <vector>

namespace folvane::pdf {

/// An image object and what it serves as.
struct ImageUse {
    QPDFObjectHandle stream;
    StoredImage::Role role = StoredImage::Role::Picture;
};

/// Every image object of the document that may be worked on, each once, the largest first, so that no core is left with
/// a long job at the end. Left out are stencils, previews, and soft masks that must keep the size of their picture.
std::vector<ImageUse> imageUses(QPDF& document);

} // namespace folvane::pdf
