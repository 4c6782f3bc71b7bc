#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <QTransform>

#include <vector>

namespace folvane::pdf {

/// Takes out of the structure tree what points into pages that have become flat (the keys of `pages`), and what was known
/// under these keys of its parent tree; the rest stays.
void removeStructureOf(QPDF& document, const ObjGenMap<QTransform>& pages,
                       const std::vector<long long>& keys);

} // namespace folvane::pdf
