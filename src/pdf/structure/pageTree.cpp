#include "pdf/structure/pageTree.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>

namespace folvane::pdf {

namespace {

constexpr size_t mostRepeats = 10'000; // of pages and nodes that stand in the tree already: more is malice
constexpr std::array inheritable{"/Resources", "/MediaBox", "/CropBox", "/Rotate"};

using Attributes = std::map<std::string, QPDFObjectHandle>;

/// What the pages below a node inherit, given what it inherits itself.
Attributes attributesBelow(QPDF& qpdf, QPDFObjectHandle node, Attributes attributes)
{
    for (const char* key : inheritable) {
        QPDFObjectHandle own = node.getKey(key);
        if (own.isNull())
            continue;
        if (own.isDictionary()
            && !own.isIndirect()) { // an object of its own, so that the pages go on sharing it
            own = qpdf.makeIndirectObject(own);
            node.replaceKey(key, own);
        }
        attributes[key] = own;
    }
    return attributes;
}

void setMissing(QPDFObjectHandle page, const Attributes& attributes)
{
    for (const auto& [key, value] : attributes) {
        if (!page.hasKey(key))
            page.replaceKey(key, value);
    }
}

class TreeWalk {
public:
    explicit TreeWalk(QPDF& qpdf) : m_qpdf(qpdf) {}

    std::vector<QPDFObjectHandle> pages(QPDFObjectHandle root)
    {
        enter(root, {});
        while (!m_path.empty()) { // a loop, not recursion: hostile trees are as deep as they like
            Level& level = m_path.back();
            if (level.next == level.kids.size())
                leave();
            else
                visit(level.node, level.kids[level.next++]);
        }
        return std::move(m_pages);
    }

private:
    struct Level {
        QPDFObjectHandle node;
        std::vector<QPDFObjectHandle> kids;
        Attributes attributes;
        size_t next = 0;
    };

    void enter(QPDFObjectHandle node, const Attributes& inherited)
    {
        if (!node.isDictionary() || !node.getKey("/Kids").isArray())
            return;
        if (!node.isIndirect())
            node = m_qpdf.makeIndirectObject(node);
        if (m_onPath.count(node.getObjGen()) || (isRepeated(node) && ++m_repeats > mostRepeats))
            return;
        m_onPath.insert(node.getObjGen());
        m_path.push_back(
            {node, node.getKey("/Kids").getArrayAsVector(), attributesBelow(m_qpdf, node, inherited), 0});
    }

    void leave()
    {
        m_onPath.erase(m_path.back().node.getObjGen());
        m_path.pop_back();
    }

    bool isRepeated(const QPDFObjectHandle& object)
    {
        return object.isIndirect() && !m_seen.insert(object.getObjGen()).second;
    }

    void visit(QPDFObjectHandle parent, QPDFObjectHandle kid)
    {
        if (!kid.isDictionary())
            return;
        const Attributes inherited = m_path.back().attributes; // a copy: entering moves the path
        if (kid.getKey("/Type").isNameAndEquals("/Page"))      // with kids or not, as for other readers
            add(kid, parent, inherited);
        else if (kid.getKey("/Kids").isArray())
            enter(kid, inherited);
        else if (!kid.getKey("/Type").isNameAndEquals("/Pages"))
            add(kid, parent, inherited);
    }

    void add(QPDFObjectHandle page, QPDFObjectHandle parent, const Attributes& inherited)
    {
        const bool isCopied = isRepeated(page);
        if (isCopied && ++m_repeats > mostRepeats)
            return;
        if (isCopied || !page.isIndirect())
            page = m_qpdf.makeIndirectObject(isCopied ? page.shallowCopy() : page);
        if (page.getKey("/Parent").getObjGen() != parent.getObjGen())
            page.replaceKey("/Parent", parent);
        setMissing(page, inherited);
        m_pages.push_back(page);
    }

    QPDF& m_qpdf;
    std::vector<Level> m_path;
    std::vector<QPDFObjectHandle> m_pages;
    ObjGenSet m_seen;
    ObjGenSet m_onPath;
    size_t m_repeats = 0;
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
