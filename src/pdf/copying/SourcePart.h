#pragma once

#include "pdf/copying/ObjectCopier.h"
#include "pdf/copying/TravelRules.h"

#include <list>
#include <optional>
#include <vector>

namespace folvane::pdf {

struct DocumentData;

/// One page on its way into the new document.
struct PagePlacement {
    int sourcePage = 0;      ///< zero-based
    int rotation = 0;        ///< degrees, as it shall stand in the new page
    QPDFObjectHandle target; ///< the new page object, empty at first
};

/// The pages that a new document takes from one source, as one document. A page that is taken more than once comes in
/// rounds: each repetition gets annotations and fields of its own, while all else leads to the first. A source that is
/// merged with itself makes a part each time: each is a copy of its own. Data (fonts, pictures) is in the new document
/// once in either case.
class SourcePart {
public:
    struct Round {
        explicit Round(ObjectCopier pagesCopier) : copier(std::move(pagesCopier)) {}

        ObjectCopier copier;
        std::vector<PagePlacement> pages;
        std::vector<QPDFObjectHandle> annotations; ///< of its pages
        std::vector<size_t> keptFields;            ///< indices into the source's FormTree::nodes
    };
    using Company = TravelRules::Company;

    SourcePart(QPDF& target, DocumentData& source, const std::vector<PagePlacement>& pages, Company company);
    /// One more part of the source that `original` has taken pages of; what the two can share, `original` copies.
    SourcePart(SourcePart& original, const std::vector<PagePlacement>& pages);
    SourcePart(const SourcePart&) = delete;
    SourcePart& operator=(const SourcePart&) = delete;

    DocumentData& source() const { return m_source; }
    TravelRules& rules() { return *m_rules; }
    /// The round of first occurrences, to which everything that names a page refers.
    ObjectCopier& copier() { return m_rounds.front().copier; }
    std::list<Round>& rounds() { return m_rounds; }
    /// The first part of its source.
    bool isOriginal() const { return m_isOriginal; }
    /// No page of the source is left out.
    bool isComplete() const;
    /// The new document has the pages of this source, each once, and no others.
    bool isWhole() const { return m_rules->carriesStructure(); }

    /// Fills the target of one page.
    void copyPage(Round& round, const PagePlacement& page);

private:
    SourcePart(ObjectCopier pagesCopier, DocumentData& source, const std::vector<PagePlacement>& pages,
               Company company, bool isOriginal);

    void sortIntoRounds(const std::vector<PagePlacement>& pages);
    Round& roundFor(size_t repetition);
    void placePages();
    void shareBetweenRounds();
    void setRules(Company company);
    void buryWhatStaysBehind();
    void buryLeftOutPages();
    bool isDeadLink(QPDFObjectHandle annotation) const;
    void buryDeadLinks(Round& round);
    void buryLeftOutFields(Round& round);
    QPDFObjectHandle copiedResources(Round& round, QPDFObjectHandle page);
    QPDFObjectHandle copiedAnnotations(Round& round, QPDFObjectHandle page, QPDFObjectHandle target);

    DocumentData& m_source;
    std::list<Round> m_rounds; // a list: copiers of later rounds refer to the first one
    bool m_isOriginal;
    std::optional<TravelRules> m_rules;
};

} // namespace folvane::pdf
