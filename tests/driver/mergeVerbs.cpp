#include "verbs.h"

#include "settled.h"

namespace folvane::driver {

namespace {

int rowCount(const Call& call)
{
    return int(call.model().merge.items.value().size());
}

int row(int place, int end)
{
    if (place < 0 || place >= end)
        throw BadRequest(QStringLiteral("there is no row %1").arg(place));
    return place;
}

/// One place or a list of them.
QSet<int> rows(const Call& call, const char* name)
{
    QSet<int> places;
    if (call.request.isList(name)) {
        for (const int place : call.request.integers(name))
            places.insert(row(place, rowCount(call)));
    } else {
        places.insert(row(call.request.integer(name), rowCount(call)));
    }
    return places;
}

QCoro::Task<> addFiles(CallPtr call)
{
    const QList<QUrl> urls = call->request.urls("files");
    call->startTime();
    QCoro::Task<> adding = call->model().addToMerge(urls);
    co_await adding;
    call->stopTime();
    call->takeNotices();
    if (call->answer.error)
        call->answer.outcome = Outcome::Failed;
    else if (call->passwords().wasCancelled())
        call->answer.outcome = Outcome::Cancelled;
}

} // namespace

QCoro::Task<> addToMerge(CallPtr call)
{
    if (call->request.has("files") == call->request.has("file"))
        throw BadRequest(QStringLiteral("give either \"files\" or \"file\""));
    if (call->request.has("files")) {
        QCoro::Task<> adding = addFiles(call);
        co_await adding;
        co_return;
    }
    const OpenFilePtr file = call->file();
    call->startTime();
    call->model().merge.add(*file);
    call->stopTime();
    call->model().destination = Destination(Destination::Place::Merge); // as the command of the window does
}

QCoro::Task<> moveInMerge(CallPtr call)
{
    const QSet<int> from = rows(*call, "from");
    const int to = row(call->request.integer("to"), rowCount(*call) + 1);
    call->startTime();
    call->model().merge.move(from, to);
    call->stopTime();
    co_return;
}

QCoro::Task<> removeFromMerge(CallPtr call)
{
    const int place = row(call->request.integer("row"), rowCount(*call));
    call->startTime();
    call->model().merge.remove(call->model().merge.items.value().at(size_t(place)).id);
    QCoro::Task<> lettingGo = engineCaughtUp(&call->model().engine());
    co_await lettingGo;
    call->stopTime();
}

QCoro::Task<> clearMerge(CallPtr call)
{
    call->startTime();
    call->model().merge.clear();
    QCoro::Task<> lettingGo = engineCaughtUp(&call->model().engine());
    co_await lettingGo;
    call->stopTime();
}

QCoro::Task<> mergeFiles(CallPtr call)
{
    const bool tooFew = rowCount(*call) < 2;
    const std::function<QCoro::Task<>()> operation = [call] { return call->model().mergeFiles(); };
    QCoro::Task<> merging = carryOutJob(call, operation);
    co_await merging;
    if (tooFew)
        call->answer.outcome = Outcome::Refused;
}

} // namespace folvane::driver
