#include "documents/OpenFile.h"

#include "documents/fileNames.h"

#include <algorithm>
#include <iterator>

namespace folvane {

OpenFile::OpenFile(QUrl fileURL, Origin origin, std::vector<PageItem> pageList,
                   std::optional<QString> unlockedBy)
    : url(std::move(fileURL)),
      name(nameWithoutEnding(url)),
      isPDF(origin == Origin::Pdf),
      pages(std::move(pageList)),
      password(std::move(unlockedBy)),
      isEdited(origin == Origin::Pictures) // pictures have never been a document of their own
{
}

bool OpenFile::hasStamps() const
{
    return std::ranges::any_of(pages.value(), [](const PageItem& page) { return !page.stamps.empty(); });
}

std::vector<PageItem> OpenFile::selectedPages() const
{
    const std::vector<PageItem>& all = pages.value();
    const QSet<QUuid>& ids = selection.value();
    std::vector<PageItem> selected;
    std::ranges::copy_if(all, std::back_inserter(selected),
                         [&ids](const PageItem& page) { return ids.contains(page.id); });
    return selected.empty() ? all : selected;
}

QList<int> OpenFile::selectedPositions() const
{
    QSet<QUuid> ids;
    for (const PageItem& page : selectedPages())
        ids.insert(page.id);
    QList<int> positions;
    int position = 0;
    for (const PageItem& page : pages.value()) {
        ++position;
        if (ids.contains(page.id))
            positions.append(position);
    }
    return positions;
}

QSet<QUuid> OpenFile::targetIDs() const
{
    if (!selection.value().isEmpty())
        return selection;
    QSet<QUuid> ids;
    for (const PageItem& page : pages.value())
        ids.insert(page.id);
    return ids;
}

} // namespace folvane
