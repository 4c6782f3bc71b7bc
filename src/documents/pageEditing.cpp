#include "documents/AppModel.h"
#include "documents/pageLists.h"
#include "engine/PDFEngine.h"
#include "platform/files/fileKind.h"
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

void insert(OpenFile& file, std::vector<PageItem> found)
{
    QSet<QUuid> ids;
    for (const PageItem& page : found)
        ids.insert(page.id);
    std::vector<PageItem> pages = file.pages;
    const auto place = pages.begin() + static_cast<std::ptrdiff_t>(insertionIndex(pages, file.selection));
    pages.insert(place, std::make_move_iterator(found.begin()), std::make_move_iterator(found.end()));
    file.pages = std::move(pages);
    file.selection = std::move(ids);
    file.isEdited = true;
}

/// The id that a dragged page carries as text.
std::optional<QUuid> pageID(const QString& text)
{
    const QUuid id(text);
    const bool isWhole = id.toString(QUuid::WithoutBraces).compare(text, Qt::CaseInsensitive) == 0;
    return isWhole ? std::optional(id) : std::nullopt;
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
    const QSet<QUuid> selected = file->selection;
    move(file, selected.contains(*id) ? selected : QSet<QUuid>{*id}, before);
    return true;
}

QCoro::Task<> AppModel::insertPages(OpenFilePtr file, QList<QUrl> urls)
{
    const std::stop_token ended = m_end.get_token();
    const Sources::Hold hold = m_sources->hold({urls.begin(), urls.end()});
    std::vector<PageItem> found;
    for (const QUrl& url : urls) {
        const std::vector<PageItem> pages = co_await pagesToInsert(url);
        if (ended.stop_requested())
            co_return;
        found.insert(found.end(), pages.begin(), pages.end());
    }
    if (!found.empty() && this->file(file->id)) // it may have been closed meanwhile
        insert(*file, std::move(found));
}

QCoro::Task<std::vector<PageItem>> AppModel::pagesToInsert(QUrl url)
{
    std::vector<PageItem> pages;
    switch (fileKind(url)) {
    case FileKind::Pdf:
        if (const std::optional<Loaded> loaded = co_await load(url))
            pages = pagesOf(url, loaded->pageCount);
        break;
    case FileKind::Picture: {
        const OpenResult result = co_await m_sources->open(url);
        if (result.kind == OpenResult::Kind::Opened)
            pages = pagesOf(url, 1);
        break;
    }
    case FileKind::Other: break;
    }
    co_return pages;
}

} // namespace folvane
