#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <map>
#include <string>

namespace folvane::pdf {

/// What decides, dictionary by dictionary, what changes on the way from one document into another.
class CopyRules {
public:
    using Entries = std::map<std::string, QPDFObjectHandle>;

    virtual ~CopyRules() = default;

    /// The dictionary does not travel: null takes its place.
    virtual bool leavesOut(QPDFObjectHandle dictionary) const = 0;
    /// Changes the entries of a dictionary, or of a stream's dictionary, before they are copied. New values are objects
    /// of the source.
    virtual void rewrite(Entries& entries, QPDFObjectHandle dictionaryOrStream) const = 0;
};

} // namespace folvane::pdf
