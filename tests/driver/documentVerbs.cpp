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

QCoro::Task<> open(CallPtr call)
{
    std::optional<Tool> tool;
    if (call->request.has("tool"))
        tool = call->request.word<Tool>(
            "tool", {{"sign", Tool::Sign}, {"split", Tool::Split}, {"compress", Tool::Compress}});
    QCoro::Task<> opening = call->model().open(filesOf(*call), tool);
    co_await opening;
    call->tell("file", call->program.shownFile());
}

QCoro::Task<> insert(CallPtr call)
{
    return call->model().insertPages(call->file(), filesOf(*call));
}

void tell(Call& call, const QStringList& names, const char* verdict)
{
    call.tell("names", QJsonArray::fromStringList(names));
    call.tell("verdict", verdict);
}

/// A document that has been closed is gone when the engine has let go of it.
void tellWhetherOpen(Call& call, const OpenFile& file, const QStringList& names)
{
    call.waitsForEngine = !call.model().file(file.id);
    tell(call, names, call.waitsForEngine ? "closed" : "open");
}

enum class CloseAnswer { SaveAs, DontSave, Cancel };

QCoro::Task<> answerQuestion(CallPtr call, OpenFilePtr asked, CloseAnswer answer)
{
    call->model().closingFile = nullptr;
    if (answer == CloseAnswer::Cancel)
        call->reply.outcome = Outcome::Cancelled;
    if (answer == CloseAnswer::DontSave)
        call->model().close(asked);
    if (answer != CloseAnswer::SaveAs)
        co_return;
    const Verb save = job([asked](const CallPtr& saving) { return saving->model().saveAs(asked); });
    QCoro::Task<> saving = save(call);
    co_await saving;
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
    const bool isAsked = call->model().closingFile.value() != nullptr;
    if (isAsked) {
        QCoro::Task<> answering = answerQuestion(call, file, answer);
        co_await answering;
    }
    tellWhetherOpen(*call, *file, isAsked ? QStringList(file->name) : QStringList());
}

void close(Call& call)
{
    const OpenFilePtr file = call.file();
    call.model().close(file);
    tellWhetherOpen(call, *file, {});
}

void quit(Call& call)
{
    const bool anyway =
        call.request.word<bool>("answer", {{"quitAnyway", true}, {"cancel", false}}, "cancel");
    const auto question = call.model().quitQuestion();
    const bool stays = question && !anyway;
    if (stays)
        call.reply.outcome = Outcome::Cancelled;
    tell(call, question ? question->names : QStringList(), stays ? "terminateCancel" : "terminateNow");
}

} // namespace

Verbs documentVerbs()
{
    return {{"open", open},
            {"insert", insert},
            {"closeRequest", requestClose},
            {"close", atOnce(close)},
            {"quit", atOnce(quit)}};
}

} // namespace folvane::driver
