#pragma once

#include "pdf/copying/contentNames.h"
#include "pdf/structure/qpdfInclude.h"

namespace folvane::pdf {

/// Leaves out of resources what a content does not name, so that a copied page does not bring along what only other
/// pages use. Keeps what it learns about shared objects, so one pruner serves all pages of a source.
class ResourcePruner {
public:
    /// What `contents` and the appearances of annotations take of the resources; these draw with the page's where they
    /// have none of their own. The same handle when there is nothing to leave out or the content cannot be read;
    /// otherwise a new direct dictionary over objects of the source.
    QPDFObjectHandle pruned(QPDFObjectHandle resources, QPDFObjectHandle contents,
                            const std::vector<QPDFObjectHandle>& annotations = {});

private:
    /// Names that content deep inside a resource takes from the page: forms and glyphs without resources of their own
    /// draw with those of the page (ISO 32000-1, 7.8.3), however deep they stand. Nothing when they cannot be read.
    using Borrowed = std::optional<NameSet>;

    bool addAppearances(const std::vector<QPDFObjectHandle>& annotations, NameSet& names);
    bool addBorrowed(QPDFObjectHandle resources, NameSet& names);
    const Borrowed& borrowedBy(QPDFObjectHandle resource, int depth);
    Borrowed read(QPDFObjectHandle resource, int depth);
    bool addContent(QPDFObjectHandle stream, Borrowed& into);
    bool addDeeper(QPDFObjectHandle resources, Borrowed& into, int depth);
    bool addGlyphs(QPDFObjectHandle font, Borrowed& into);

    ObjGenMap<Borrowed> m_borrowed;
    Borrowed m_ofDirect; ///< of the direct object that was looked at last
};

} // namespace folvane::pdf
