#include "verbs.h"

namespace folvane::driver {

namespace {

size_t rowCount(const Call& call)
{
    return call.model().merge.items.value().size();
}

/// One of the places before `end`.
int place(int row, size_t end)
{
    if (row < 0 || size_t(row) >= end)
        throw BadRequest(QStringLiteral("there is no row %1").arg(row));
    return row;
}

QCoro::Task<> add(CallPtr call)
{
    if (call->request.has("files") == call->request.has("file"))
        throw BadRequest(QStringLiteral("give either \"files\" or \"file\""));
    if (call->request.has("file")) {
        call->model().merge.add(*call->file());
        call->model().destination = Destination(Destination::Place::Merge); // as the window's command does
    }
    return call->model().addToMerge(call->request.list<QUrl>("files"));
}

void move(Call& call)
{
    QSet<int> rows;
    for (const int row : call.request.list<int>("from"))
        rows.insert(place(row, rowCount(call)));
    call.model().merge.move(rows, place(call.request.get<int>("to"), rowCount(call) + 1));
}

void remove(Call& call)
{
    const auto row = size_t(place(call.request.get<int>("row"), rowCount(call)));
    call.model().merge.remove(call.model().merge.items.value()[row].id);
    call.waitsForEngine = true;
}

void clear(Call& call)
{
    call.model().merge.clear();
    call.waitsForEngine = true;
}

QCoro::Task<> merge(CallPtr call)
{
    if (rowCount(*call) < 2)
        throw Refused();
    return call->model().mergeFiles();
}

} // namespace

Verbs mergeVerbs()
{
    return {{"mergeAdd", add},
            {"mergeMove", atOnce(move)},
            {"mergeRemove", atOnce(remove)},
            {"mergeClear", atOnce(clear)},
            {"merge", job(merge)}};
}

} // namespace folvane::driver
