#include "documents/pageLists.h"
#include "verbs.h"

namespace folvane::driver {

namespace {

/// The page in front of which something goes; nothing for the end.
std::optional<QUuid> before(const Call& call)
{
    return call.request.has("before") ? std::optional(call.page("before").id) : std::nullopt;
}

void select(Call& call)
{
    call.file()->selection = call.pages(idsOf(call.file()->pages)); // left out: Select All
}

// It lands at once, unless the engine has to tell the size of a page with a stamp.
void turn(Call& call)
{
    const OpenFilePtr file = call.file();
    const std::vector<PageItem> before = file->pages;
    const QSet<QUuid> ids = call.pages(file->targetIDs());
    call.model().turn(file, ids, call.request.get<bool>("clockwise", true));
    call.waitsForEngine = !ids.isEmpty() && file->pages.value() == before;
}

void deletePages(Call& call)
{
    call.withError = Outcome::Refused;
    call.model().deletePages(call.file(), call.pages(call.file()->selection));
}

void move(Call& call)
{
    call.model().move(call.file(), call.pages(call.file()->selection), before(call));
}

void dropPages(Call& call)
{
    const QStringList items{call.page("page").id.toString(QUuid::WithoutBraces)};
    if (!call.model().dropPages(call.file(), items, before(call)))
        throw Refused();
}

} // namespace

Verbs pageVerbs()
{
    return {{"select", atOnce(select)},
            {"turn", atOnce(turn)},
            {"delete", atOnce(deletePages)},
            {"move", atOnce(move)},
            {"dropPages", atOnce(dropPages)}};
}

} // namespace folvane::driver
