#include "documents/AppModel.h"
#include "documents/pages/pageLists.h"
#include "engine/PDFEngine.h"
#include "platform/tasks/spawn.h"

#include <algorithm>
#include <iterator>

namespace folvane {

namespace {

/// A page's turn and its size as shown with that turn, at the time when turning was asked for.
struct Measured {
    int turn = 0;
    QSizeF size{0, 0};
};

using Sizes = QHash<QUuid, Measured>;

/// The engine outlives the model.
QCoro::Task<Sizes> measure(PDFEngine& engine, std::vector<PageItem> pages)
{
    Sizes sizes;
    for (const PageItem& page : pages) {
        const QSizeF size = co_await engine.displaySize(page.source, page.turn);
        sizes.insert(page.id, {page.turn, size});
    }
    co_return sizes;
}

/// A turn that was asked for earlier may have landed after the page was measured.
QSizeF sizeNow(const PageItem& page, const Sizes& sizes)
{
    const Measured measured = sizes.value(page.id);
    return (page.turn - measured.turn) % 180 == 0 ? measured.size : measured.size.transposed();
}

void land(OpenFile& file, const QSet<QUuid>& ids, int quarters, const Sizes& sizes)
{
    std::vector<PageItem> pages = file.pages;
    for (PageItem& page : pages)
        if (ids.contains(page.id))
            page = turned(page, sizeNow(page, sizes), quarters);
    file.pages = std::move(pages);
    file.isEdited = true;
}

QCoro::Task<> measureAndTurn(PDFEngine& engine, OpenFilePtr file, QSet<QUuid> ids, int quarters)
{
    std::vector<PageItem> stamped; // only stamps need the size
    for (const PageItem& page : file->pages.value())
        if (ids.contains(page.id) && !page.stamps.empty())
            stamped.push_back(page);
    const Sizes sizes = co_await measure(engine, std::move(stamped));
    land(*file, ids, quarters, sizes);
}

void insert(OpenFile& file, const std::vector<PageItem>& found)
{
    std::vector<PageItem> pages = file.pages;
    const auto place = pages.begin() + static_cast<std::ptrdiff_t>(insertionIndex(pages, file.selection));
    pages.insert(place, found.begin(), found.end());
    file.pages = std::move(pages);
    file.selection = idsOf(found);
    file.isEdited = true;
}

} // namespace

void AppModel::turn(OpenFilePtr file, QSet<QUuid> pages, bool clockwise)
{
    spawn(measureAndTurn(m_services.engine, file, pages, clockwise ? 1 : 3));
}

void AppModel::deletePages(OpenFilePtr file, const QSet<QUuid>& pages)
{
    const std::vector<PageItem>& all = file->pages.value();
    if (pages.isEmpty() || pages.size() >= static_cast<qsizetype>(all.size())) {
        errorMessage = tr("A file needs at least one page. To get rid of it, close the file.");
        return;
    }
    std::vector<PageItem> rest;
    rest.reserve(all.size());
    std::ranges::remove_copy_if(all, std::back_inserter(rest),
                                [&pages](const PageItem& page) { return pages.contains(page.id); });
    const QSet<QUuid> selected = file->selection.value() - pages;
    file->pages = std::move(rest);
    file->selection = selected;
    file->isEdited = true;
}

void AppModel::move(OpenFilePtr file, const QSet<QUuid>& pages, std::optional<QUuid> before)
{
    std::optional<std::vector<PageItem>> moved = movedGroup(file->pages, pages, before);
    if (!moved)
        return;
    file->pages = std::move(*moved);
    file->isEdited = true;
}

bool AppModel::dropPages(OpenFilePtr file, const QStringList& items, std::optional<QUuid> before)
{
    const std::optional<QUuid> id = items.isEmpty() ? std::nullopt : pageID(items.first());
    if (!id)
        return false;
    move(file, file->groupOf(*id), before);
    return true;
}

QCoro::Task<> AppModel::insertPages(OpenFilePtr file, QList<QUrl> urls)
{
    const std::stop_token ended = m_end.get_token();
    const Sources::Hold hold = m_sources->hold({urls.begin(), urls.end()});
    const std::vector<PageItem> found = co_await loadAll(urls, BadPictures::LeaveOut);
    if (ended.stop_requested())
        co_return;
    if (!found.empty() && this->file(file->id)) // it may have been closed meanwhile
        insert(*file, found);
}

} // namespace folvane
