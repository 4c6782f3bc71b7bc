#pragma once

#include "pdf/CopyRules.h"

#include <map>
#include <string>

namespace folvane::pdf {

struct DocumentData;
class ObjectCopier;

/// What must change in the objects of one source on their way into a new document: what points at a left-out page
/// goes, names that clash are replaced, signatures lose their value, and what only makes sense in the source stays.
class TravelRules : public CopyRules {
public:
    enum class Structure { Dropped, Carried };
    enum class Resources { AsTheyAre, Pruned };

    TravelRules(DocumentData& source, const ObjectCopier& copier, Structure structure, Resources resources);

    bool leavesOut(QPDFObjectHandle dictionary) const override;
    void rewrite(Entries& entries, QPDFObjectHandle dictionaryOrStream) const override;

    bool carriesStructure() const { return m_structure == Structure::Carried; }
    bool prunesResources() const { return m_resources == Resources::Pruned; }
    /// Named destinations that get another name, so that they do not fall on those of another source. Keys and values
    /// as in DestinationTable: with a slash for the older kind.
    void rename(const std::string& from, const std::string& to) { m_newNames[from] = to; }

    /// The destination leads to a page that is left out.
    bool isGone(QPDFObjectHandle destination) const;
    /// A link annotation, a bookmark: its destination, direct or through a go-to action; null when it has none.
    static QPDFObjectHandle destinationOf(QPDFObjectHandle annotationOrBookmark);
    /// The destination as it must read in the new document, still over objects of the source.
    QPDFObjectHandle rewrittenDestination(QPDFObjectHandle destination) const;

private:
    void rewriteStream(Entries& entries, QPDFObjectHandle stream) const;
    void rewriteDictionary(Entries& entries) const;

    DocumentData& m_source;
    const ObjectCopier& m_copier;
    Structure m_structure;
    Resources m_resources;
    std::map<std::string, std::string> m_newNames;
};

} // namespace folvane::pdf
