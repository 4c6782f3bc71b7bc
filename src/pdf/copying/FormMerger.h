#pragma once

#include "pdf/copying/FreeNames.h"
#include "pdf/copying/SourcePart.h"

#include <set>
#include <string>

namespace folvane::pdf {

/// Joins the forms of all parts into one. A top-level name that two sources (or two copies of a page) share is
/// replaced in the later one, so that their values stay apart; so are default fonts of one name that differ.
class FormMerger {
public:
    explicit FormMerger(QPDF& target) : m_target(target) {}

    /// Copies the fields of a part whose pages have been copied.
    void add(SourcePart& part);
    /// The finished form; null when no page has anything of a form.
    QPDFObjectHandle form();

private:
    using NameMap = std::map<std::string, std::string>;

    void addRound(SourcePart& part, SourcePart::Round& round);
    void renameClashing(const std::vector<QPDFObjectHandle>& topLevel);
    NameMap mergeDefaultResources(SourcePart::Round& round, QPDFObjectHandle resources);
    void takeDefaults(SourcePart::Round& round, QPDFObjectHandle form,
                      const std::vector<QPDFObjectHandle>& topLevel, const NameMap& newFonts);

    QPDF& m_target;
    QPDFObjectHandle m_form = QPDFObjectHandle::newDictionary();
    QPDFObjectHandle m_fields = QPDFObjectHandle::newArray();
    QPDFObjectHandle m_calculationOrder = QPDFObjectHandle::newArray();
    std::set<std::string> m_names;
    FreeNames m_freeFields;
    FreeNames m_freeResources;
    bool m_isNeeded = false;
};

} // namespace folvane::pdf
