#pragma once

#include "pdf/structure/qpdfInclude.h"

namespace folvane::pdf {

/// Gives a field the appearance with which viewers show it when it has none: background, border, and its value, caption or mark.
/// It stays without one where there is nothing to see.
void drawWidget(QPDF& document, QPDFObjectHandle widget);

/// The value in the appearance that the field has becomes the present one.
void drawValue(QPDF& document, QPDFObjectHandle widget);

} // namespace folvane::pdf
