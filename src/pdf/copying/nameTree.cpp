#include "pdf/copying/nameTree.h"

namespace folvane::pdf {

namespace {

constexpr int entriesPerLeaf = 64;

struct Leaf {
    QPDFObjectHandle names = QPDFObjectHandle::newArray();
    std::string first;
    std::string last;
};

QPDFObjectHandle limits(const Leaf& leaf)
{
    return QPDFObjectHandle::newArray(
        {QPDFObjectHandle::newString(leaf.first), QPDFObjectHandle::newString(leaf.last)});
}

} // namespace

QPDFObjectHandle nameTree(QPDF& target, const std::map<std::string, QPDFObjectHandle>& entries)
{
    std::vector<Leaf> leaves;
    for (const auto& [key, value] : entries) {
        if (leaves.empty() || leaves.back().names.getArrayNItems() >= 2 * entriesPerLeaf)
            leaves.emplace_back().first = key;
        leaves.back().last = key;
        leaves.back().names.appendItem(QPDFObjectHandle::newString(key));
        leaves.back().names.appendItem(value);
    }
    QPDFObjectHandle root = QPDFObjectHandle::newDictionary();
    if (leaves.size() == 1) {
        root.replaceKey("/Names", leaves.front().names);
        return target.makeIndirectObject(root);
    }
    QPDFObjectHandle kids = QPDFObjectHandle::newArray();
    for (const Leaf& leaf : leaves) {
        QPDFObjectHandle node = QPDFObjectHandle::newDictionary();
        node.replaceKey("/Limits", limits(leaf));
        node.replaceKey("/Names", leaf.names);
        kids.appendItem(target.makeIndirectObject(node));
    }
    root.replaceKey("/Kids", kids);
    return target.makeIndirectObject(root);
}

} // namespace folvane::pdf
