#include "documents/pages/pageLists.h"
#include "platform/files/fileKind.h"
#include "verbs.h"

#include <algorithm>

// How documents come and go, and what happens to their pages.

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

Verbs documentVerbs()
{
    return {{"open", open},
            {"insert",
             [](const CallPtr& call) { return call->model().insertPages(call->file(), filesOf(*call)); }},
            {"closeRequest", requestClose},
            {"close", atOnce(close)},
            {"quit", atOnce(quit)},
            {"select", atOnce(select)},
            {"turn", atOnce(turn)},
            {"delete", atOnce(deletePages)},
            {"move", atOnce(move)},
            {"dropPages", atOnce(dropPages)}};
}

} // namespace folvane::driver
