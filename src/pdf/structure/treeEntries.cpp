#include "pdf/structure/treeEntries.h"

#include "platform/tasks/Cancelled.h"

namespace folvane::pdf {

namespace {

void addPairs(std::vector<TreeEntry>& entries, QPDFObjectHandle pairs)
{
    if (!pairs.isArray())
        return;
    const std::vector<QPDFObjectHandle> items = pairs.getArrayAsVector();
    for (size_t i = 0; i + 1 < items.size(); i += 2)
        entries.emplace_back(items[i], items[i + 1]);
}

} // namespace

std::vector<TreeEntry> treeEntries(QPDFObjectHandle root, const char* pairsKey, const std::stop_token& stop)
{
    std::vector<TreeEntry> entries;
    ObjGenSet seen;
    std::vector<QPDFObjectHandle> waiting{root};
    while (!waiting.empty()) {
        throwIfStopped(stop);
        QPDFObjectHandle node = waiting.back();
        waiting.pop_back();
        if (!node.isDictionary() || (node.isIndirect() && !seen.insert(node.getObjGen()).second))
            continue;
        addPairs(entries, node.getKey(pairsKey));
        if (QPDFObjectHandle kids = node.getKey("/Kids"); kids.isArray()) {
            const std::vector<QPDFObjectHandle> below = kids.getArrayAsVector();
            waiting.insert(waiting.end(), below.rbegin(), below.rend());
        }
    }
    return entries;
}

} // namespace folvane::pdf
