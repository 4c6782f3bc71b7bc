#pragma once

#include "pdf/structure/PageGeometry.h"
#include "pdf/structure/qpdfInclude.h"

#include <string>
#include <vector>

namespace folvane::pdf {

/// The annotations of a page, as they stand there.
std::vector<QPDFObjectHandle> annotationsOf(QPDFObjectHandle page);

/// The page's own rotation: 0, 90, 180 or 270. One that is no multiple of 90 counts as none.
int pageRotation(QPDFObjectHandle page);

/// Geometry of a page as readers take it: damaged boxes fall back (no media box: US Letter, as elsewhere).
PageGeometry pageGeometry(QPDFObjectHandle page);

} // namespace folvane::pdf
