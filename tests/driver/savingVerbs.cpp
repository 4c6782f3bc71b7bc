#include "platform/desktop/Preferences.h"
#include "tools/exportImages/exporting.h"
#include "tools/protect/protecting.h"
#include "tools/split/splitting.h"
#include "verbs.h"

// What writes files of a document, each as if the sheet for it were up.

namespace folvane::driver {

namespace {

OpenFilePtr fileWithSelection(const Call& call)
{
    const OpenFilePtr file = call.file();
    file->selection = call.pages(file->selection); // as the context menu of a page does
    return file;
}

QCoro::Task<> extract(CallPtr call)
{
    return call->model().extract(fileWithSelection(*call));
}

SplitChoice splitChoice(const Request& request, const OpenFile& file)
{
    using Mode = SplitChoice::Mode;
    SplitChoice choice;
    choice.mode =
        request.word<Mode>("mode", {{"ranges", Mode::Ranges}, {"every", Mode::Every}, {"each", Mode::Each}});
    if (!file.selection.value().isEmpty())
        choice.text = PageRanges::describe(file.selectedPositions()); // what the sheet begins with
    choice.text = request.get<QString>("ranges", choice.text);
    choice.every = request.get<int>("every", choice.every);
    if (choice.every < 1)
        throw BadRequest(QStringLiteral("\"every\" must be at least 1"));
    return choice;
}

QCoro::Task<> splitFile(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const SplitChoice choice = splitChoice(call->request, *file);
    const SplitSummary said = summary(choice, int(file->pages.value().size()));
    call->tell("summary", said.text);
    if (said.kind != SplitSummary::Kind::Files)
        throw Refused();
    call->model().sheet = std::nullopt;
    return split(call->model(), *file, choice);
}

QCoro::Task<> protect(CallPtr call)
{
    const OpenFilePtr file = call->file();
    const auto password = call->request.find<QString>("password");
    if (password && password->isEmpty())
        throw Refused();
    call->model().sheet = std::nullopt;
    return saveProtectedCopy(call->model(), file, password);
}

QCoro::Task<> exportPages(CallPtr call)
{
    Preferences& preferences = call->model().services().preferences;
    ExportSettings settings = ExportSettings::read(preferences);
    settings.jpeg = call->request.get<bool>("jpeg", settings.jpeg);
    settings.dpi = call->request.get<int>("dpi", settings.dpi);
    if (settings.dpi != 100 && settings.dpi != 200 && settings.dpi != 300)
        throw BadRequest(QStringLiteral("\"dpi\" must be 100, 200 or 300"));
    const OpenFilePtr file = fileWithSelection(*call);
    settings.write(preferences); // as picking them in the sheet does
    call->model().sheet = std::nullopt;
    return exportImages(call->model(), *file, settings);
}

} // namespace

Verbs savingVerbs()
{
    return {{"saveAs", job([](const CallPtr& call) { return call->model().saveAs(call->file()); })},
            {"extract", job(extract)},
            {"split", job(splitFile)},
            {"password", job(protect)},
            {"exportImages", job(exportPages)}};
}

} // namespace folvane::driver
