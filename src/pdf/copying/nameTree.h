#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <map>
#include <string>

namespace folvane::pdf {

/// A name tree (ISO 32000-2, 7.9.6) over the entries, as an indirect object of `target`. Keys are bytes: the library's own
/// helper takes them for text and writes them in another encoding, and then links lead nowhere.
QPDFObjectHandle nameTree(QPDF& target, const std::map<std::string, QPDFObjectHandle>& entries);

} // namespace folvane::pdf
