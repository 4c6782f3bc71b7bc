#include "verbs.h"

#include "settled.h"
#include "shownFile.h"

namespace folvane::driver {

namespace {

void tell(Call& call, const QStringList& names, const char* verdict)
{
    call.answer.fields[QStringLiteral("names")] = QJsonArray::fromStringList(names);
    call.answer.fields[QStringLiteral("verdict")] = QLatin1String(verdict);
}

void tellWhetherOpen(Call& call, const OpenFilePtr& file, const QStringList& names)
{
    tell(call, names, call.model().file(file->id) ? "open" : "closed");
}

enum class Answered { SaveAs, DontSave, Cancel };

Answered closeAnswer(const Request& request)
{
    const QString answer = request.optionalText("answer").value_or(QStringLiteral("cancel"));
    if (answer == QLatin1String("saveAs"))
        return Answered::SaveAs;
    if (answer == QLatin1String("dontSave"))
        return Answered::DontSave;
    if (answer == QLatin1String("cancel"))
        return Answered::Cancel;
    throw BadRequest(QStringLiteral("\"answer\" must be saveAs, dontSave or cancel"));
}

bool quitAnyway(const Request& request)
{
    const QString answer = request.optionalText("answer").value_or(QStringLiteral("cancel"));
    if (answer != QLatin1String("quitAnyway") && answer != QLatin1String("cancel"))
        throw BadRequest(QStringLiteral("\"answer\" must be quitAnyway or cancel"));
    return answer == QLatin1String("quitAnyway");
}

QCoro::Task<> closeAndForget(CallPtr call, OpenFilePtr file, std::function<void()> closing)
{
    call->startTime();
    closing();
    if (call->model().file(file->id))
        co_return; // a question came up instead
    QCoro::Task<> forgotten = engineCaughtUp(&call->model().engine());
    co_await forgotten;
    call->stopTime();
}

QCoro::Task<> saveInstead(CallPtr call, OpenFilePtr file)
{
    call->model().closingFile = nullptr;
    const std::function<QCoro::Task<>()> operation = [call, file] { return call->model().saveAs(file); };
    QCoro::Task<> saving = carryOutJob(call, operation);
    co_await saving;
}

QCoro::Task<> answerQuestion(CallPtr call, OpenFilePtr file, Answered answer)
{
    if (answer == Answered::Cancel) {
        call->model().closingFile = nullptr;
        call->answer.outcome = Outcome::Cancelled;
        co_return;
    }
    const std::function<void()> closing = [call, file] { call->model().close(file); };
    QCoro::Task<> following =
        answer == Answered::SaveAs ? saveInstead(call, file) : closeAndForget(call, file, closing);
    co_await following;
}

} // namespace

QCoro::Task<> requestClose(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const Answered answer = closeAnswer(call->request);
    const std::function<void()> asking = [call, file] { call->model().requestClose(file); };
    QCoro::Task<> requested = closeAndForget(call, file, asking);
    co_await requested;
    QStringList names;
    if (const OpenFilePtr asked = call->model().closingFile.value()) {
        names.append(asked->name);
        QCoro::Task<> answered = answerQuestion(call, asked, answer);
        co_await answered;
    }
    tellWhetherOpen(*call, file, names);
}

QCoro::Task<> closeFile(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const std::function<void()> closing = [call, file] { call->model().close(file); };
    QCoro::Task<> closed = closeAndForget(call, file, closing);
    co_await closed;
    tellWhetherOpen(*call, file, {});
}

QCoro::Task<> quit(CallPtr call)
{
    const bool anyway = quitAnyway(call->request);
    call->startTime();
    const auto question = call->model().quitQuestion();
    call->stopTime();
    const bool stays = question && !anyway;
    if (stays)
        call->answer.outcome = Outcome::Cancelled;
    tell(*call, question ? question->names : QStringList(), stays ? "terminateCancel" : "terminateNow");
    co_return;
}

} // namespace folvane::driver
