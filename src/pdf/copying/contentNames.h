#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <optional>
#include <string>
#include <unordered_set>

namespace folvane::pdf {

using NameSet = std::unordered_set<std::string>;

/// A name with its escapes ("#20") resolved.
std::string decodedName(const std::string& name);

/// All names ("/F1") that occur in the content of a stream or an array of streams, decoded, outside of
/// comments and strings. It may hold more than the operators use (in content with inline images, whose data can look like
/// anything), never less. Nothing when the content cannot be decoded whole or is longer than 64 MB.
std::optional<NameSet> contentNames(QPDFObjectHandle contents);

} // namespace folvane::pdf
