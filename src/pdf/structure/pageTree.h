#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <vector>

namespace folvane::pdf {

/// The pages of a document in order, each an object of its own with all its attributes: what it inherits is written
/// down in it. Mends, in memory, what would mislead later: a node that loops is passed over, a page that occurs twice,
/// alone or with a node above it, is doubled (up to 10,000 times in all), a wrong /Parent is set right. When the tree leads
/// to no page, all page objects that the file holds, in its order. Throws what qpdf throws.
std::vector<QPDFObjectHandle> pagesOf(QPDF& qpdf);

} // namespace folvane::pdf
