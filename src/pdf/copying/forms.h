#pragma once

#include "pdf/copying/SourcePart.h"

#include <stop_token>

namespace folvane::pdf {

/// The forms of all parts, whose pages have been copied, as one; null when no page has anything of a form. A top-level
/// name that two sources (or two copies of a page) share is replaced in the later one, so that their values stay apart;
/// so are default fonts of one name that differ. Throws Cancelled.
QPDFObjectHandle joinedForms(QPDF& target, std::list<SourcePart>& parts, const std::stop_token& stop);

} // namespace folvane::pdf
