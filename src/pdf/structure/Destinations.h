#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <map>
#include <string>

namespace folvane::pdf {

struct DocumentData;

/// The named destinations of a document. Names of the two kinds (strings in a name tree, and name objects in the
/// older dictionary, which here keep their slash) live side by side; a value is an array or a dictionary with /D.
struct DestinationTable {
    std::map<std::string, QPDFObjectHandle> byString; ///< raw bytes of the key
    std::map<std::string, QPDFObjectHandle> byName;

    static DestinationTable read(QPDFObjectHandle catalogue);

    /// What a name leads to; null when it leads nowhere.
    QPDFObjectHandle find(QPDFObjectHandle name) const;
};

/// The zero-based page that a destination (explicit, named, or a dictionary) leads to; -1 when it leads to none.
int destinationPage(DocumentData& source, QPDFObjectHandle destination);

} // namespace folvane::pdf
