#include "verbs.h"

#include "pages.h"
#include "settled.h"

namespace folvane::driver {

namespace {

struct Shown {
    QUuid page;
    int turn = 0;
};

// Any page of the group: all of them land together.
std::optional<Shown> firstOf(const OpenFile& file, const QSet<QUuid>& ids)
{
    for (const PageItem& page : file.pages.value())
        if (ids.contains(page.id))
            return Shown{page.id, page.turn};
    return std::nullopt;
}

QSet<QUuid> allPages(const OpenFile& file)
{
    QSet<QUuid> ids;
    for (const PageItem& page : file.pages.value())
        ids.insert(page.id);
    return ids;
}

QSet<QUuid> pagesOrSelection(const Request& request, const OpenFile& file)
{
    const auto pages = optionalPages(request, file);
    return pages ? *pages : file.selection.value();
}

} // namespace

QCoro::Task<> selectPages(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const auto pages = optionalPages(call->request, *file);
    const QSet<QUuid> selection = pages ? *pages : allPages(*file); // left out: Select All
    call->startTime();
    file->selection = selection;
    co_return;
}

QCoro::Task<> turnPages(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const auto given = optionalPages(call->request, *file);
    const QSet<QUuid> pages = given ? *given : file->targetIDs();
    const bool clockwise = call->request.flag("clockwise", true);
    const auto before = firstOf(*file, pages);
    call->startTime();
    call->model().turn(file, pages, clockwise);
    if (!before)
        co_return;
    QCoro::Task<> turned = pageTurned(file, before->page, before->turn);
    co_await turned;
}

QCoro::Task<> deletePages(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const QSet<QUuid> pages = pagesOrSelection(call->request, *file);
    call->startTime();
    call->model().deletePages(file, pages);
    call->stopTime();
    call->takeNotices();
    call->answer.outcome = call->answer.error ? Outcome::Refused : Outcome::Done;
    co_return;
}

QCoro::Task<> movePages(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const QSet<QUuid> pages = pagesOrSelection(call->request, *file);
    const auto before = optionalPage(call->request, "before", *file);
    call->startTime();
    call->model().move(file, pages, before);
    co_return;
}

QCoro::Task<> dropPages(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const QStringList items{page(call->request, "page", *file).toString(QUuid::WithoutBraces)};
    const auto before = optionalPage(call->request, "before", *file);
    call->startTime();
    const bool taken = call->model().dropPages(file, items, before);
    call->answer.outcome = taken ? Outcome::Done : Outcome::Refused;
    co_return;
}

} // namespace folvane::driver
