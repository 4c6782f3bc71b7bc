#include "pdf/copying/pageLabels.h"

#include "pdf/structure/DocumentData.h"
#include "pdf/structure/treeEntries.h"

#include <algorithm>
#include <optional>

namespace folvane::pdf {

namespace {

struct Label {
    std::string style;  ///< "/D", "/r" …; empty when there is no number
    std::string prefix; ///< raw bytes
    long long number = 1;

    bool continues(const Label& before) const
    {
        return style == before.style && prefix == before.prefix
               && (style.empty() || number == before.number + 1);
    }
};

constexpr long long highestNumber = 1'000'000'000; // so that counting on never overflows

using Ranges = std::map<long long, Label>; // by the first page of the range

Label labelOf(QPDFObjectHandle entry)
{
    Label label;
    if (QPDFObjectHandle style = entry.getKey("/S"); style.isName())
        label.style = style.getName();
    if (QPDFObjectHandle prefix = entry.getKey("/P"); prefix.isString())
        label.prefix = prefix.getStringValue();
    if (QPDFObjectHandle start = entry.getKey("/St"); start.isInteger())
        label.number = std::clamp(start.getIntValue(), 1LL, highestNumber);
    return label;
}

Ranges readRanges(DocumentData& source, const std::stop_token& stop)
{
    Ranges ranges;
    for (auto& [key, entry] : treeEntries(source.catalogue().getKey("/PageLabels"), "/Nums", stop)) {
        if (!key.isInteger() || !entry.isDictionary())
            continue;
        if (const long long first = key.getIntValue(); first >= 0 && first <= highestNumber)
            ranges.emplace(first, labelOf(entry));
    }
    return ranges;
}

std::optional<Label> labelAt(const Ranges& ranges, long long page)
{
    auto after = ranges.upper_bound(page);
    if (after == ranges.begin())
        return std::nullopt;
    const auto& [first, start] = *std::prev(after);
    Label label = start;
    label.number += page - first;
    return label;
}

Label labelOf(const LabelledPage& page, const Ranges& ranges, long long position)
{
    if (ranges.empty())
        return {"/D", {}, position + 1};
    // A page before the first range shows its number in the source.
    return labelAt(ranges, page.sourcePage).value_or(Label{"/D", {}, page.sourcePage + 1LL});
}

QPDFObjectHandle entryOf(const Label& label)
{
    QPDFObjectHandle entry = QPDFObjectHandle::newDictionary();
    if (!label.style.empty())
        entry.replaceKey("/S", QPDFObjectHandle::newName(label.style));
    if (!label.prefix.empty())
        entry.replaceKey("/P", QPDFObjectHandle::newString(label.prefix));
    if (label.number != 1 && !label.style.empty())
        entry.replaceKey("/St", QPDFObjectHandle::newInteger(label.number));
    return entry;
}

} // namespace

QPDFObjectHandle joinedPageLabels(const std::vector<LabelledPage>& pages, const std::stop_token& stop)
{
    std::map<DocumentData*, Ranges> rangesOf;
    bool anyLabels = false;
    for (const LabelledPage& page : pages) {
        if (!rangesOf.count(page.source))
            anyLabels = !(rangesOf[page.source] = readRanges(*page.source, stop)).empty() || anyLabels;
    }
    if (!anyLabels)
        return QPDFObjectHandle::newNull();

    QPDFObjectHandle numbers = QPDFObjectHandle::newArray();
    std::optional<Label> before;
    for (size_t i = 0; i < pages.size(); ++i) {
        const auto position = static_cast<long long>(i);
        const Label label = labelOf(pages[i], rangesOf[pages[i].source], position);
        if (!before || !label.continues(*before)) {
            numbers.appendItem(QPDFObjectHandle::newInteger(position));
            numbers.appendItem(entryOf(label));
        }
        before = label;
    }
    QPDFObjectHandle tree = QPDFObjectHandle::newDictionary();
    tree.replaceKey("/Nums", numbers);
    return tree;
}

} // namespace folvane::pdf
