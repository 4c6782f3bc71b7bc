#include "pdf/copying/outlines.h"

#include "pdf/structure/Destinations.h"
#include "pdf/structure/DocumentData.h"
#include "platform/tasks/Cancelled.h"

namespace folvane::pdf {

namespace {

constexpr int depthLimit = 20'000; // far beyond any table of contents; damage and malice go deeper

struct Bookmark {
    QPDFObjectHandle source;
    std::vector<Bookmark> children;
};

class OutlineReader {
public:
    explicit OutlineReader(SourcePart& part) : m_part(part) {}

    std::vector<Bookmark> kept(QPDFObjectHandle first, int depth = 0)
    {
        std::vector<Bookmark> bookmarks;
        if (depth > depthLimit)
            return bookmarks;
        for (QPDFObjectHandle item = first; item.isDictionary() && isNew(item); item = item.getKey("/Next")) {
            Bookmark bookmark{item, kept(item.getKey("/First"), depth + 1)};
            if (stays(bookmark))
                bookmarks.push_back(std::move(bookmark));
        }
        return bookmarks;
    }

private:
    bool isNew(QPDFObjectHandle item) { return item.isIndirect() && m_seen.insert(item.getObjGen()).second; }

    bool stays(const Bookmark& bookmark)
    {
        if (!bookmark.children.empty())
            return true;
        QPDFObjectHandle item = bookmark.source;
        QPDFObjectHandle destination = TravelRules::destinationOf(item);
        if (!destination.isNull())
            return !m_part.rules().isGone(destination);
        const bool lostItsChildren = item.getKey("/First").isDictionary();
        return !lostItsChildren || item.hasKey("/A");
    }

    SourcePart& m_part;
    ObjGenSet m_seen;
};

class OutlineWriter {
public:
    explicit OutlineWriter(SourcePart& part) : m_part(part) {}

    /// Appends the bookmarks below `parent`, behind those it has; returns how many lines they take when shown.
    int write(const std::vector<Bookmark>& bookmarks, QPDFObjectHandle parent)
    {
        int lines = 0;
        for (const Bookmark& bookmark : bookmarks) {
            QPDFObjectHandle item = m_part.copier().target().makeIndirectObject(copied(bookmark));
            append(item, parent);
            const int below = write(bookmark.children, item);
            const bool isOpen = !isClosed(bookmark.source);
            if (below > 0)
                item.replaceKey("/Count", QPDFObjectHandle::newInteger(isOpen ? below : -below));
            lines += 1 + (isOpen ? below : 0);
        }
        return lines;
    }

private:
    static bool isClosed(QPDFObjectHandle item)
    {
        QPDFObjectHandle count = item.getKey("/Count");
        return count.isInteger() && count.getIntValue() < 0;
    }

    QPDFObjectHandle copied(const Bookmark& bookmark)
    {
        std::map<std::string, QPDFObjectHandle> entries;
        QPDFObjectHandle item = bookmark.source;
        for (const char* key : {"/Title", "/Dest", "/A", "/C", "/F", "/SE"}) {
            if (item.hasKey(key) && (m_part.isWhole() || std::string_view(key) != "/SE"))
                entries.emplace(key, item.getKey(key));
        }
        return m_part.copier().copy(QPDFObjectHandle::newDictionary(entries));
    }

    static void append(QPDFObjectHandle item, QPDFObjectHandle parent)
    {
        item.replaceKey("/Parent", parent);
        if (QPDFObjectHandle last = parent.getKey("/Last"); last.isDictionary()) {
            last.replaceKey("/Next", item);
            item.replaceKey("/Prev", last);
        } else {
            parent.replaceKey("/First", item);
        }
        parent.replaceKey("/Last", item);
    }

    SourcePart& m_part;
};

} // namespace

QPDFObjectHandle joinedOutlines(QPDF& target, std::list<SourcePart>& parts, const std::stop_token& stop)
{
    QPDFObjectHandle root;
    int lines = 0;
    for (SourcePart& part : parts) {
        throwIfStopped(stop);
        QPDFObjectHandle outlines = part.source().catalogue().getKey("/Outlines");
        if (!outlines.isDictionary())
            continue;
        const std::vector<Bookmark> bookmarks = OutlineReader(part).kept(outlines.getKey("/First"));
        if (bookmarks.empty())
            continue;
        if (!root.isInitialized())
            root = target.makeIndirectObject(QPDFObjectHandle::newDictionary());
        lines += OutlineWriter(part).write(bookmarks, root);
        part.copier().drain();
    }
    if (!root.isInitialized())
        return QPDFObjectHandle::newNull();
    root.replaceKey("/Type", QPDFObjectHandle::newName("/Outlines"));
    root.replaceKey("/Count", QPDFObjectHandle::newInteger(lines));
    return root;
}

} // namespace folvane::pdf
