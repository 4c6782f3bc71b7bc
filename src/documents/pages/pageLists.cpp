#include "documents/pages/pageLists.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace folvane {

namespace {

// A placement's width is a fraction of the page's width, which after the turn is the old height.
StampPlacement quarterTurned(StampPlacement stamp, QSizeF size)
{
    stamp.center = QPointF(1 - stamp.center.y(), stamp.center.x());
    stamp.width = stamp.width * size.width() / std::max(size.height(), 1.0);
    stamp.rotation = std::fmod(stamp.rotation + 90, 360);
    return stamp;
}

bool haveSameOrder(const std::vector<PageItem>& a, const std::vector<PageItem>& b)
{
    return std::ranges::equal(a, b, {}, &PageItem::id, &PageItem::id);
}

} // namespace

std::vector<PageItem> pagesOf(const QUrl& url, int pageCount)
{
    std::vector<PageItem> pages(static_cast<size_t>(std::max(pageCount, 0)));
    for (int index = 0; PageItem & page : pages)
        page.source = PageSource{url, index++};
    return pages;
}

std::vector<PageItem> duplicates(const std::vector<PageItem>& pages)
{
    std::vector<PageItem> copies;
    copies.reserve(pages.size());
    std::ranges::transform(pages, std::back_inserter(copies), &PageItem::duplicated);
    return copies;
}

QSet<QUuid> idsOf(const std::vector<PageItem>& pages)
{
    QSet<QUuid> ids;
    for (const PageItem& page : pages)
        ids.insert(page.id);
    return ids;
}

std::optional<QUuid> pageID(const QString& text)
{
    const QUuid id(text);
    const bool isWhole = id.toString(QUuid::WithoutBraces).compare(text, Qt::CaseInsensitive) == 0;
    return isWhole && !id.isNull() ? std::optional(id) : std::nullopt;
}

QSet<QUrl> sourcesOf(const std::vector<PageItem>& pages)
{
    QSet<QUrl> urls;
    for (const PageItem& page : pages)
        urls.insert(page.source.url);
    return urls;
}

PageItem turned(PageItem page, QSizeF size, int quarters)
{
    for (int i = 0; i < quarters; ++i) {
        for (StampPlacement& stamp : page.stamps)
            stamp = quarterTurned(stamp, size);
        page.turn = (page.turn + 90) % 360;
        size.transpose();
    }
    return page;
}

std::optional<std::vector<PageItem>> movedGroup(const std::vector<PageItem>& pages, const QSet<QUuid>& group,
                                                const std::optional<QUuid>& before)
{
    if (before && group.contains(*before))
        return std::nullopt;
    std::vector<PageItem> moved;
    std::vector<PageItem> result;
    result.reserve(pages.size());
    std::ranges::partition_copy(pages, std::back_inserter(moved), std::back_inserter(result),
                                [&group](const PageItem& page) { return group.contains(page.id); });
    const auto place = before ? std::ranges::find(result, *before, &PageItem::id) : result.end();
    result.insert(place, std::make_move_iterator(moved.begin()), std::make_move_iterator(moved.end()));
    if (haveSameOrder(result, pages))
        return std::nullopt;
    return result;
}

size_t insertionIndex(const std::vector<PageItem>& pages, const QSet<QUuid>& selection)
{
    for (size_t end = pages.size(); end > 0; --end)
        if (selection.contains(pages[end - 1].id))
            return end;
    return pages.size();
}

} // namespace folvane
