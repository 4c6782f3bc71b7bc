#include "pages.h"
#include "verbs.h"

#include <QCoroFuture>

#include <algorithm>

namespace folvane::driver {

namespace {

const PageItem& pageAt(int position, const OpenFile& file)
{
    const std::vector<PageItem>& pages = file.pages.value();
    if (position < 1 || size_t(position) > pages.size())
        throw BadRequest(QStringLiteral("there is no page %1").arg(position));
    return pages[size_t(position) - 1];
}

/// The page in front of which something goes; nothing for the end.
std::optional<QUuid> before(const Request& request, const OpenFile& file)
{
    return request.has("before") ? std::optional(page(request, "before", file).id) : std::nullopt;
}

QSet<QUuid> pagesOrSelection(const Call& call, const OpenFile& file)
{
    return pages(call.request, file).value_or(file.selection.value());
}

void select(Call& call)
{
    const OpenFilePtr file = call.file();
    QSet<QUuid> all; // Select All
    for (const PageItem& page : file->pages.value())
        all.insert(page.id);
    file->selection = pages(call.request, *file).value_or(all);
}

/// The turn of the first of the pages, for all land together; nothing when there is none.
std::optional<int> turnOf(const OpenFile& file, const QSet<QUuid>& ids)
{
    for (const PageItem& page : file.pages.value())
        if (ids.contains(page.id))
            return page.turn;
    return std::nullopt;
}

QCoro::Task<> nextChange(OpenFilePtr file)
{
    QPromise<void> changed;
    changed.start();
    const QPropertyNotifier notifier = file->pages.addNotifier([&changed] { changed.finish(); });
    const QFuture<void> change = changed.future();
    co_await change;
}

QCoro::Task<> turn(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const QSet<QUuid> ids = pages(call->request, *file).value_or(file->targetIDs());
    const std::optional<int> before = turnOf(*file, ids);
    call->model().turn(file, ids, call->request.get<bool>("clockwise", true));
    while (before && turnOf(*file, ids) == before) {
        QCoro::Task<> changing = nextChange(file);
        co_await changing;
    }
}

void deletePages(Call& call)
{
    const OpenFilePtr file = call.file();
    call.withError = Outcome::Refused;
    call.model().deletePages(file, pagesOrSelection(call, *file));
}

void move(Call& call)
{
    const OpenFilePtr file = call.file();
    call.model().move(file, pagesOrSelection(call, *file), before(call.request, *file));
}

void dropPages(Call& call)
{
    const OpenFilePtr file = call.file();
    const QStringList items{page(call.request, "page", *file).id.toString(QUuid::WithoutBraces)};
    if (!call.model().dropPages(file, items, before(call.request, *file)))
        call.answer.outcome = Outcome::Refused;
}

} // namespace

const PageItem& page(const Request& request, const char* field, const OpenFile& file)
{
    return pageAt(request.get<int>(field), file);
}

std::optional<QSet<QUuid>> pages(const Request& request, const OpenFile& file)
{
    const auto positions = request.find<QList<int>>("pages");
    if (!positions)
        return std::nullopt;
    QSet<QUuid> ids;
    for (const int position : *positions)
        ids.insert(pageAt(position, file).id);
    return ids;
}

Verbs pageVerbs()
{
    return {{"select", select},
            {"turn", turn},
            {"delete", deletePages},
            {"move", move},
            {"dropPages", dropPages}};
}

} // namespace folvane::driver
