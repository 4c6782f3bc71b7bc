#include "codes/links/LinkCheck.h"
#include "documents/pages/PageRanges.h"
#include "documents/statusLine.h"
#include "verbs.h"

#include <QFile>

#include <array>

// What changes nothing.

namespace folvane::driver {

namespace {

/// What the answer tells of one document. The pages of all are taken at one moment.
struct Snapshot {
    OpenFilePtr file;
    std::vector<PageItem> pages;
    std::vector<QSizeF> sizes; ///< displayed, in points
};

QJsonValue name(const std::optional<Destination>& destination)
{
    constexpr std::array names{"home", "merge", "stamps", "codes", "about"}; // as the places are numbered
    for (size_t place = 0; place < names.size(); ++place)
        if (destination && destination->is(Destination::Place(place)))
            return names[place];
    return destination ? "file" : QJsonValue();
}

QJsonValue name(const std::optional<FileSheet>& sheet)
{
    constexpr std::array names{"compress", "split", "password", "exportImages"}; // as the kinds are numbered
    return sheet ? QJsonValue(names.at(size_t(sheet->kind))) : QJsonValue();
}

QJsonArray mergeRows(const AppModel& model)
{
    QJsonArray rows;
    for (const MergeItem& item : model.merge.items.value())
        rows.append(QJsonObject{{"name", item.name}, {"pages", qint64(item.pages.size())}});
    return rows;
}

QJsonObject around(const Program& program)
{
    const AppModel& model = program.model;
    const auto busy = model.busy.value();
    return {{"destination", name(model.destination.value())},        {"file", program.shownFile()},
            {"busy", busy ? QJsonValue(busy->title) : QJsonValue()}, {"sheet", name(model.sheet.value())},
            {"closing", program.placeOf(model.closingFile.value())}, {"merge", mergeRows(model)}};
}

QJsonObject told(const PageItem& page, const QSizeF& size)
{
    QJsonArray stamps;
    for (const StampPlacement& placement : page.stamps)
        stamps.append(toldPlacement(placement));
    return {{"id", page.id.toString(QUuid::WithoutBraces)},
            {"path", page.source.url.toLocalFile()},
            {"index", page.source.index},
            {"turn", page.turn},
            {"width", size.width()},
            {"height", size.height()},
            {"stamps", stamps}};
}

QJsonObject told(const Snapshot& document)
{
    const OpenFile& file = *document.file;
    const QSet<QUuid> selection = file.selection.value();
    QJsonArray pages;
    QJsonArray selected;
    for (size_t i = 0; i < document.pages.size(); ++i) {
        pages.append(told(document.pages[i], document.sizes[i]));
        if (selection.contains(document.pages[i].id))
            selected.append(qint64(i) + 1);
    }
    return {{"id", file.id.toString(QUuid::WithoutBraces)},
            {"url", file.url.toString(QUrl::FullyEncoded)},
            {"name", file.name},
            {"isPDF", file.isPDF},
            {"isEdited", file.isEdited.value()},
            {"locked", file.password.has_value()},
            {"selection", selected},
            {"statusLine", statusLine(file)},
            {"pages", pages}};
}

QCoro::Task<> tellState(CallPtr call)
{
    call->reply.fields = around(call->program);
    std::vector<Snapshot> snapshots;
    for (const OpenFilePtr& file : call->model().files.value())
        snapshots.push_back({file, file->pages, {}});
    for (Snapshot& snapshot : snapshots)
        for (const PageItem& page : snapshot.pages) {
            QCoro::Task<QSizeF> measuring = call->model().engine().displaySize(page.source, page.turn);
            const QSizeF size = co_await measuring;
            snapshot.sizes.push_back(size);
        }
    call->stopTime();
    QJsonArray documents;
    for (const Snapshot& snapshot : snapshots)
        documents.append(told(snapshot));
    call->tell("documents", documents);
}

QCoro::Task<> drawImage(CallPtr call)
{
    const PageItem item = call->page("page");
    const double longSide = call->request.get<double>("longSide");
    const auto target = call->request.find<QUrl>("to");
    QCoro::Task<std::optional<SendableImage>> drawing =
        call->model().engine().image(item.source, item.turn, longSide);
    const std::optional<SendableImage> drawn = co_await drawing;
    call->stopTime();
    const bool isThere = drawn && !drawn->image.isNull();
    call->reply.outcome = isThere ? Outcome::Done : Outcome::Failed;
    call->tell("width", isThere ? QJsonValue(drawn->image.width()) : QJsonValue());
    call->tell("height", isThere ? QJsonValue(drawn->image.height()) : QJsonValue());
    if (drawn && target && !drawn->image.save(target->toLocalFile(), "PNG"))
        throw BadRequest(QStringLiteral("the picture can't be written to %1").arg(target->toLocalFile()));
}

void parseRanges(Call& call)
{
    const auto ranges = PageRanges::parse(call.request.get<QString>("text"), call.request.get<int>("count"));
    QJsonArray pairs;
    for (const PageRange& range : ranges.value_or(QList<PageRange>()))
        pairs.append(QJsonArray{range.first, range.last});
    call.tell("ranges", ranges ? QJsonValue(pairs) : QJsonValue());
}

void describePages(Call& call)
{
    call.tell("text", PageRanges::describe(call.request.get<QList<int>>("numbers")));
}

void judgeLink(Call& call)
{
    constexpr std::array names{"userInfo",          "lookalike", "brandInAddress",
                               "plainHTTP",         "ipAddress", "mixedScripts",
                               "internationalName", "shortener"}; // as the kinds are numbered
    const LinkCheck check =
        checkLink(QUrl(call.request.get<QString>("url")), call.request.get<QString>("rawText", QString()));
    QJsonArray warnings;
    QJsonArray sentences;
    for (const LinkWarning& warning : check.warnings) {
        warnings.append(names[size_t(warning.kind)]);
        sentences.append(sentenceOf(warning, check.realSite));
    }
    call.reply.fields = {{"displayAddress", check.displayAddress},
                         {"host", check.host},
                         {"realSite", check.realSite},
                         {"warnings", warnings},
                         {"sentences", sentences}};
}

/// "VmHWM:     1234 kB" in the process's own report.
void tellMemory(Call& call)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        throw BadRequest(QStringLiteral("the system does not tell the peak"));
    for (QByteArray line = status.readLine(); !line.isEmpty(); line = status.readLine())
        if (line.startsWith("VmHWM:"))
            call.tell("peak", line.simplified().split(' ').at(1).toLongLong() * 1024);
}

} // namespace

QJsonObject toldPlacement(const StampPlacement& placement)
{
    return {{"id", placement.id.toString(QUuid::WithoutBraces)},
            {"stamp", placement.stampID.toString(QUuid::WithoutBraces)},
            {"center", QJsonArray{placement.center.x(), placement.center.y()}},
            {"width", placement.width},
            {"rotation", placement.rotation}};
}

Verbs tellingVerbs()
{
    return {{"state", tellState},           {"image", drawImage},
            {"parse", atOnce(parseRanges)}, {"describe", atOnce(describePages)},
            {"link", atOnce(judgeLink)},    {"rss", atOnce(tellMemory)}};
}

} // namespace folvane::driver
