#include "pdf/stamping/flatStructure.h"

namespace folvane::pdf {

namespace {

/// A walk through the structure tree (ISO 32000-1, 14.7): each element or content names its page, or takes its parent's.
class StructurePruner {
public:
    explicit StructurePruner(const ObjGenMap<QTransform>& flat) : m_flat(flat) {}

    /// False when it is of flat pages alone.
    bool keeps(QPDFObjectHandle item, bool isFlat)
    {
        if (item.isInteger())
            return !isFlat;
        if (!item.isDictionary() || (item.isIndirect() && !m_seen.insert(item.getObjGen()).second))
            return true;
        const bool isOfFlat = item.hasKey("/Pg") ? m_flat.contains(item.getKey("/Pg").getObjGen()) : isFlat;
        QPDFObjectHandle kids = item.getKey("/K");
        if (kids.isNull()) // content by reference, or an element without any
            return !(isOfFlat && (item.hasKey("/MCID") || item.hasKey("/Obj")));
        const bool isKept = keepsKids(item, kids, isOfFlat);
        if (isKept && isOfFlat && item.hasKey("/Pg"))
            item.removeKey("/Pg"); // what is left names its own
        return isKept;
    }

private:
    bool keepsKids(QPDFObjectHandle item, QPDFObjectHandle kids, bool isFlat)
    {
        if (!kids.isArray())
            return keeps(kids, isFlat);
        std::vector<QPDFObjectHandle> kept;
        for (QPDFObjectHandle& kid : kids.getArrayAsVector())
            if (keeps(kid, isFlat))
                kept.push_back(kid);
        item.replaceKey("/K", QPDFObjectHandle::newArray(kept));
        return !kept.empty();
    }

    const ObjGenMap<QTransform>& m_flat;
    ObjGenSet m_seen;
};

void removeKeys(QPDF& document, QPDFObjectHandle root, const std::vector<long long>& keys)
{
    QPDFObjectHandle parents = root.getKey("/ParentTree");
    if (!parents.isDictionary())
        return;
    try {
        QPDFNumberTreeObjectHelper tree(parents, document);
        for (const long long key : keys)
            tree.remove(key);
    } catch (const std::exception&) {
        root.removeKey("/ParentTree"); // damaged: of no use to anybody, and no reason not to save
    }
}

} // namespace

void removeStructureOf(QPDF& document, const ObjGenMap<QTransform>& pages, const std::vector<long long>& keys)
{
    QPDFObjectHandle root = document.getRoot().getKey("/StructTreeRoot");
    if (!root.isDictionary())
        return;
    if (!StructurePruner(pages).keeps(root, false)) {
        document.getRoot().removeKey("/StructTreeRoot");
        return;
    }
    removeKeys(document, root, keys);
}

} // namespace folvane::pdf
