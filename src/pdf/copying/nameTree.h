#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <map>
#include <string>

namespace folvane::pdf {

/// A name tree (ISO 32000-2, 7.9.6) over the entries, as an indirect object of `target`.
QPDFObjectHandle nameTree(QPDF& target, const std::map<std::string, QPDFObjectHandle>& entries);

} // namespace folvane::pdf
