#pragma once

#include "pdf/copying/CopyRules.h"
#include "pdf/copying/ResourcePruner.h"

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
    enum class Company { Alone, Merged }; ///< whether the new document has other sources, too

    TravelRules(DocumentData& source, const ObjectCopier& copier, Structure structure, Resources resources,
                Company company);

    bool leavesOut(QPDFObjectHandle dictionary) const override;
    void rewrite(Entries& entries, QPDFObjectHandle dictionaryOrStream) const override;

    bool carriesStructure() const { return m_structure == Structure::Carried; }
    /// What a copy of the content takes of its resources, with that of a page's annotations.
    QPDFObjectHandle resourcesFor(QPDFObjectHandle resources, QPDFObjectHandle contents,
                                  const std::vector<QPDFObjectHandle>& annotations = {}) const;
    /// Named destinations that get another name, so that they do not fall on those of another source: those of the
    /// name tree, and those of the older dictionary.
    void renameString(const std::string& from, const std::string& to) { m_newStrings[from] = to; }
    void renameName(const std::string& from, const std::string& to) { m_newNames[from] = to; }

    /// The destination leads to a page that is left out.
    bool isGone(QPDFObjectHandle destination) const;
    /// A link annotation, a bookmark: its destination, direct or through a go-to action; null when it has none.
    static QPDFObjectHandle destinationOf(QPDFObjectHandle annotationOrBookmark);
    /// The destination as it must read in the new document, still over objects of the source.
    QPDFObjectHandle rewrittenDestination(QPDFObjectHandle destination) const;

private:
    void rewriteStream(Entries& entries, QPDFObjectHandle stream) const;
    void rewriteDictionary(Entries& entries) const;
    QPDFObjectHandle rewrittenName(QPDFObjectHandle name) const;

    DocumentData& m_source;
    const ObjectCopier& m_copier;
    Structure m_structure;
    Resources m_resources;
    Company m_company;
    mutable ResourcePruner m_pruner; // what it remembers changes no result
    std::map<std::string, std::string> m_newStrings;
    std::map<std::string, std::string> m_newNames;
};

} // namespace folvane::pdf
