#include "pdf/pageTree.h"

#include <algorithm>

namespace folvane::pdf {

namespace {

class TreeWalk {
public:
    explicit TreeWalk(QPDF& qpdf) : m_qpdf(qpdf) {}

    std::vector<QPDFObjectHandle> pages(QPDFObjectHandle root)
    {
        enter(root);
        while (!m_path.empty()) { // a loop, not recursion: hostile trees are as deep as they like
            Level& level = m_path.back();
            if (level.next == level.kids.size())
                m_path.pop_back();
            else
                visit(level.node, level.kids[level.next++]);
        }
        return std::move(m_pages);
    }

private:
    struct Level {
        QPDFObjectHandle node;
        std::vector<QPDFObjectHandle> kids;
        size_t next = 0;
    };

    void enter(QPDFObjectHandle node)
    {
        if (node.isDictionary() && node.getKey("/Kids").isArray() && m_seen.insert(node.getObjGen()).second)
            m_path.push_back({node, node.getKey("/Kids").getArrayAsVector(), 0});
    }

    void visit(QPDFObjectHandle parent, QPDFObjectHandle kid)
    {
        if (!kid.isDictionary())
            return;
        if (kid.getKey("/Kids").isArray()) {
            setParent(kid, parent);
            enter(kid);
        } else if (!kid.getKey("/Type").isNameAndEquals("/Pages")) {
            QPDFObjectHandle page = asOwnObject(kid);
            setParent(page, parent);
            m_pages.push_back(page);
        }
    }

    QPDFObjectHandle asOwnObject(QPDFObjectHandle page)
    {
        const bool isRepeated = page.isIndirect() && !m_seen.insert(page.getObjGen()).second;
        if (page.isIndirect() && !isRepeated)
            return page;
        return m_qpdf.makeIndirectObject(isRepeated ? page.shallowCopy() : page);
    }

    static void setParent(QPDFObjectHandle kid, QPDFObjectHandle parent)
    {
        if (parent.isIndirect() && kid.getKey("/Parent").getObjGen() != parent.getObjGen())
            kid.replaceKey("/Parent", parent);
    }

    QPDF& m_qpdf;
    std::vector<Level> m_path;
    std::vector<QPDFObjectHandle> m_pages;
    ObjGenSet m_seen;
};

std::vector<QPDFObjectHandle> loosePages(QPDF& qpdf)
{
    std::vector<QPDFObjectHandle> pages;
    for (QPDFObjectHandle object : qpdf.getAllObjects()) {
        if (object.isDictionary() && object.getKey("/Type").isNameAndEquals("/Page"))
            pages.push_back(object);
    }
    // Producers write pages in reading order more often than they number them so.
    std::sort(pages.begin(), pages.end(), [](QPDFObjectHandle a, QPDFObjectHandle b) {
        return a.getParsedOffset() < b.getParsedOffset();
    });
    return pages;
}

} // namespace

std::vector<QPDFObjectHandle> pagesOf(QPDF& qpdf)
{
    std::vector<QPDFObjectHandle> pages = TreeWalk(qpdf).pages(qpdf.getRoot().getKey("/Pages"));
    return pages.empty() ? loosePages(qpdf) : pages;
}

} // namespace folvane::pdf
