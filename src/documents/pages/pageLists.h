#pragma once

#include "records/PageItem.h"

#include <QSet>
#include <QSizeF>

#include <optional>
#include <vector>

namespace folvane {

// What edits do to pages, from values to values.

/// One new entry for each page of a source.
std::vector<PageItem> pagesOf(const QUrl& url, int pageCount);

/// Each page through PageItem::duplicated().
std::vector<PageItem> duplicates(const std::vector<PageItem>& pages);

QSet<QUuid> idsOf(const std::vector<PageItem>& pages);

/// The id that a dragged page carries as text; none when the text is no page's.
std::optional<QUuid> pageID(const QString& text);

/// The files that the pages point at.
QSet<QUrl> sourcesOf(const std::vector<PageItem>& pages);

/// The page after quarter turns to the right; three of them are one to the left. `size` is that of the page
/// as shown before. Stamps keep their place on the paper and their size.
PageItem turned(PageItem page, QSizeF size, int quarters);

/// The list with the group (in list order) in front of `before`, or at the end when that is none or not
/// there. Nothing when that changes nothing: also when `before` belongs to the group.
std::optional<std::vector<PageItem>> movedGroup(const std::vector<PageItem>& pages, const QSet<QUuid>& group,
                                                const std::optional<QUuid>& before);

/// Where inserted pages go: behind the last selected page, else to the end.
size_t insertionIndex(const std::vector<PageItem>& pages, const QSet<QUuid>& selection);

} // namespace folvane
