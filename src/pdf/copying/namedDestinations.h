#pragma once

#include "pdf/copying/FreeNames.h"
#include "pdf/copying/SourcePart.h"

namespace folvane::pdf {

/// Carries the named destinations of kept pages. A name that an earlier part uses gets a new one in the later part,
/// and the links of that part follow.
class NamedDestinations {
public:
    /// Decides all names, before anything of the parts is copied.
    explicit NamedDestinations(std::list<SourcePart>& parts);

    /// Copies the destinations into the catalogue of the new document; call after the pages.
    void write(QPDF& target);

private:
    struct Entry {
        SourcePart* part;
        QPDFObjectHandle source;
    };
    using Entries = std::map<std::string, Entry>;
    using Names = std::map<std::string, QPDFObjectHandle>;
    struct Taken {
        Entries entries;
        FreeNames freeNames;
    };

    static std::map<std::string, std::string> take(SourcePart& part, const Names& names, Taken& taken);
    static std::map<std::string, QPDFObjectHandle> copied(const Entries& entries);

    Taken m_byString;
    Taken m_byName;
};

} // namespace folvane::pdf
