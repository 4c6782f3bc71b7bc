#include "verbs.h"

#include "pages.h"
#include "platform/desktop/Preferences.h"
#include "settled.h"
#include "tools/exportImages/exporting.h"
#include "tools/protect/protecting.h"
#include "tools/split/splitting.h"

// What the sheets over a document do, each as if its sheet were up.

namespace folvane::driver {

namespace {

SplitChoice::Mode readMode(const Request& request)
{
    const QString name = request.text("mode");
    if (name == QLatin1String("ranges"))
        return SplitChoice::Mode::Ranges;
    if (name == QLatin1String("every"))
        return SplitChoice::Mode::Every;
    if (name == QLatin1String("each"))
        return SplitChoice::Mode::Each;
    throw BadRequest(QStringLiteral("\"mode\" must be ranges, every or each"));
}

SplitChoice readChoice(const Request& request, const OpenFile& file)
{
    SplitChoice choice;
    choice.mode = readMode(request);
    if (!file.selection.value().isEmpty())
        choice.text = PageRanges::describe(file.selectedPositions()); // what the sheet begins with
    choice.text = request.optionalText("ranges").value_or(choice.text);
    choice.every = request.optionalInteger("every").value_or(choice.every);
    if (choice.every < 1)
        throw BadRequest(QStringLiteral("\"every\" must be at least 1"));
    return choice;
}

ExportSettings readSettings(const Call& call)
{
    ExportSettings settings = ExportSettings::read(call.model().services().preferences);
    settings.jpeg = call.request.flag("jpeg", settings.jpeg);
    settings.dpi = call.request.optionalInteger("dpi").value_or(settings.dpi);
    if (settings.dpi != 100 && settings.dpi != 200 && settings.dpi != 300)
        throw BadRequest(QStringLiteral("\"dpi\" must be 100, 200 or 300"));
    return settings;
}

using Operation = std::function<QCoro::Task<>()>;

QCoro::Task<> carryOutOfSheet(CallPtr call, Operation operation)
{
    call->model().sheet = std::nullopt;
    QCoro::Task<> running = carryOutJob(call, operation);
    co_await running;
}

} // namespace

QCoro::Task<> splitFile(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const SplitChoice choice = readChoice(call->request, *file);
    const SplitSummary said = summary(choice, int(file->pages.value().size()));
    call->answer.fields[QStringLiteral("summary")] = said.text;
    if (said.kind != SplitSummary::Kind::Files) {
        call->answer.outcome = Outcome::Refused; // the button is disabled
        co_return;
    }
    const Operation operation = [call, file, choice] { return split(call->model(), *file, choice); };
    QCoro::Task<> splitting = carryOutOfSheet(call, operation);
    co_await splitting;
}

QCoro::Task<> saveWithPassword(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const std::optional<QString> password = call->request.optionalText("password");
    if (password && password->isEmpty()) {
        call->answer.outcome = Outcome::Refused; // the button is disabled
        co_return;
    }
    const Operation operation = [call, file, password] {
        return saveProtectedCopy(call->model(), file, password);
    };
    QCoro::Task<> saving = carryOutOfSheet(call, operation);
    co_await saving;
}

QCoro::Task<> exportPages(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const ExportSettings settings = readSettings(*call);
    if (const auto pages = optionalPages(call->request, *file))
        file->selection = *pages;
    settings.write(call->model().services().preferences); // as picking them in the sheet does
    const Operation operation = [call, file, settings] {
        return exportImages(call->model(), *file, settings);
    };
    QCoro::Task<> exporting = carryOutOfSheet(call, operation);
    co_await exporting;
}

} // namespace folvane::driver
