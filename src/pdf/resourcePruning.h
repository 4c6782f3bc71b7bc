#pragma once

#include "pdf/qpdfInclude.h"

namespace folvane::pdf {

/// Resources without the fonts, pictures and the like that `contents` does not name, so that a copied page does not
/// bring along what only other pages use. The same handle when there is nothing to leave out or the content cannot be
/// read; otherwise a new direct dictionary over objects of the source.
QPDFObjectHandle prunedResources(QPDFObjectHandle resources, QPDFObjectHandle contents);

} // namespace folvane::pdf
