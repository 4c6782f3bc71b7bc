#include "verbs.h"

#include "platform/files/fileKind.h"

#include <algorithm>

// How documents come and go.

namespace folvane::driver {

namespace {

/// The files to open. When none of them is anything that opens, the model refuses.
QList<QUrl> filesOf(Call& call)
{
    if (!call.request.has("files"))
        throw BadRequest(QStringLiteral("\"files\" is missing"));
    const auto urls = call.request.list<QUrl>("files");
    if (std::ranges::all_of(urls, [](const QUrl& url) { return fileKind(url) == FileKind::Other; }))
        call.withError = Outcome::Refused;
    return urls;
}

std::optional<Tool> toolOf(const Request& request)
{
    if (!request.has("tool"))
        return std::nullopt;
    return request.word<Tool>("tool",
                              {{"sign", Tool::Sign}, {"split", Tool::Split}, {"compress", Tool::Compress}});
}

QCoro::Task<> open(CallPtr call)
{
    const QList<QUrl> urls = filesOf(*call);
    QCoro::Task<> opening = call->model().open(urls, toolOf(call->request));
    co_await opening;
    call->tell("file", call->program.shownFile());
}

QCoro::Task<> insert(CallPtr call)
{
    const OpenFilePtr file = call->file();
    QCoro::Task<> inserting = call->model().insertPages(file, filesOf(*call));
    co_await inserting;
}

void tell(Call& call, const QStringList& names, const char* verdict)
{
    call.tell("names", QJsonArray::fromStringList(names));
    call.tell("verdict", verdict);
}

/// A document that has been closed is gone when the engine has let go of it.
QCoro::Task<> tellWhetherOpen(CallPtr call, OpenFilePtr file, QStringList names)
{
    const bool isOpen = call->model().file(file->id) != nullptr;
    tell(*call, names, isOpen ? "open" : "closed");
    if (!isOpen) {
        QCoro::Task<> lettingGo = engineCaughtUp(call);
        co_await lettingGo;
    }
}

enum class CloseAnswer { SaveAs, DontSave, Cancel };

QCoro::Task<> answerQuestion(CallPtr call, OpenFilePtr asked, CloseAnswer answer)
{
    call->model().closingFile = nullptr;
    switch (answer) {
    case CloseAnswer::Cancel: call->answer.outcome = Outcome::Cancelled; break;
    case CloseAnswer::DontSave: call->model().close(asked); break;
    case CloseAnswer::SaveAs: {
        const Verb::Operation operation = [call, asked] { return call->model().saveAs(asked); };
        QCoro::Task<> saving = carryOutJob(call, operation);
        co_await saving;
    }
    }
}

QCoro::Task<> requestClose(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const auto answer = call->request.word<CloseAnswer>("answer",
                                                        {{"saveAs", CloseAnswer::SaveAs},
                                                         {"dontSave", CloseAnswer::DontSave},
                                                         {"cancel", CloseAnswer::Cancel}},
                                                        "cancel");
    call->model().requestClose(file);
    QStringList names;
    if (const OpenFilePtr asked = call->model().closingFile.value()) {
        names.append(asked->name);
        QCoro::Task<> answering = answerQuestion(call, asked, answer);
        co_await answering;
    }
    QCoro::Task<> telling = tellWhetherOpen(call, file, names);
    co_await telling;
}

QCoro::Task<> close(CallPtr call)
{
    const OpenFilePtr file = call->file();
    call->model().close(file);
    QCoro::Task<> telling = tellWhetherOpen(call, file, {});
    co_await telling;
}

void quit(Call& call)
{
    const bool anyway =
        call.request.word<bool>("answer", {{"quitAnyway", true}, {"cancel", false}}, "cancel");
    const auto question = call.model().quitQuestion();
    const bool stays = question && !anyway;
    if (stays)
        call.answer.outcome = Outcome::Cancelled;
    tell(call, question ? question->names : QStringList(), stays ? "terminateCancel" : "terminateNow");
}

} // namespace

Verbs documentVerbs()
{
    return {
        {"open", open}, {"insert", insert}, {"closeRequest", requestClose}, {"close", close}, {"quit", quit}};
}

} // namespace folvane::driver
