#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <vector>

namespace folvane::pdf {

/// Takes these widgets out of the document's form, with the fields that have no other.
void removeFields(QPDF& document, const std::vector<QPDFObjectHandle>& widgets);

} // namespace folvane::pdf
