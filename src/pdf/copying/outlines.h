#pragma once

#include "pdf/copying/SourcePart.h"

#include <stop_token>

namespace folvane::pdf {

/// The bookmarks of all parts one behind the other, less those of left-out pages; null when none is left. A heading
/// whose own page is left out stays, without its target, for the bookmarks below it.
QPDFObjectHandle joinedOutlines(QPDF& target, std::list<SourcePart>& parts, const std::stop_token& stop);

} // namespace folvane::pdf
