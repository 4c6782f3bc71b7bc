#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <QTransform>

namespace folvane::pdf {

/// Rewrites every destination in the document that leads to one of these pages, by the change of its space.
void moveDestinations(QPDF& document, const ObjGenMap<QTransform>& moves);

} // namespace folvane::pdf
