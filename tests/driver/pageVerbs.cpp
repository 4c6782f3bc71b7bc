#include "verbs.h"

#include <QCoroFuture>

#include <algorithm>

namespace folvane::driver {

namespace {

/// The page in front of which something goes; nothing for the end.
std::optional<QUuid> before(const Call& call, const OpenFile& file)
{
    return call.request.has("before") ? std::optional(call.page("before", file).id) : std::nullopt;
}

void select(Call& call)
{
    const OpenFilePtr file = call.file();
    QSet<QUuid> all; // Select All
    for (const PageItem& page : file->pages.value())
        all.insert(page.id);
    file->selection = call.pages(*file, all);
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
    const QSet<QUuid> ids = call->pages(*file, file->targetIDs());
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
    call.model().deletePages(file, call.pages(*file, file->selection));
}

void move(Call& call)
{
    const OpenFilePtr file = call.file();
    call.model().move(file, call.pages(*file, file->selection), before(call, *file));
}

void dropPages(Call& call)
{
    const OpenFilePtr file = call.file();
    const QStringList items{call.page("page", *file).id.toString(QUuid::WithoutBraces)};
    if (!call.model().dropPages(file, items, before(call, *file)))
        call.answer.outcome = Outcome::Refused;
}

} // namespace

Verbs pageVerbs()
{
    return {{"select", select},
            {"turn", turn},
            {"delete", deletePages},
            {"move", move},
            {"dropPages", dropPages}};
}

} // namespace folvane::driver
