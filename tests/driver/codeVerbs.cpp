#include "codes/contentJson.h"
#include "codes/reading/symbologies.h"
#include "verbs.h"

// Codes, and what they mean.

namespace folvane::driver {

namespace {

void tellContent(Call& call)
{
    const auto symbology = symbologyOf(call.request.get<QString>("symbology", QStringLiteral("qr")));
    if (!symbology)
        throw BadRequest(QStringLiteral("there is no such symbology"));
    const CodeContent content = codeContent(call.request.get<QString>("payload"), *symbology);
    const QJsonObject told = contentJson(content);
    call.tell("kind", told["kind"]);
    call.tell("fields", told["fields"]);
    call.tell("title", kindTitle(content));
}

QJsonObject told(const FoundCode& code)
{
    return {{"payload", code.payload},
            {"symbology", rawText(code.symbology)},
            {"origin", code.origin},
            {"page", orNull(code.page)}};
}

QCoro::Task<> readCodes(CallPtr call)
{
    const CodesModel& codes = call->model().codes;
    QCoro::Task<> reading = call->model().readCodes(call->request.list<QUrl>("files"));
    call->task = codes.task;
    co_await reading;
    call->stopTime();
    if (call->task.stop_requested())
        call->reply.outcome = Outcome::Cancelled;
    QJsonArray found;
    for (const FoundCode& code : codes.found.value())
        found.append(told(code));
    call->tell("found", found);
    call->tell("emptyMessage", orNull(codes.emptyMessage.value()));
}

} // namespace

Verbs codeVerbs()
{
    return {{"codes", readCodes}, {"content", atOnce(tellContent)}};
}

} // namespace folvane::driver
