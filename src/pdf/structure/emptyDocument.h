#pragma once

#include "pdf/structure/qpdfInclude.h"

namespace folvane::pdf {

/// A document without pages, whose warnings nobody is told.
std::shared_ptr<QPDF> emptyDocument();

} // namespace folvane::pdf
