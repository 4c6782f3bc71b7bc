#include "documents/OpenFile.h"

#include "documents/fileNames.h"
#include "documents/pages/pageLists.h"

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
    const QSet<QUuid> ids = idsOf(selectedPages());
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
    return selection.value().isEmpty() ? idsOf(pages) : selection.value();
}

QSet<QUuid> OpenFile::groupOf(const QUuid& page) const
{
    return selection.value().contains(page) ? selection.value() : QSet<QUuid>{page};
}

} // namespace folvane
