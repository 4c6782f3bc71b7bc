#include "documents/statusLine.h"
#include "verbs.h"

#include <array>

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
    using Place = Destination::Place;
    constexpr std::array names{std::pair{Place::Home, "home"}, std::pair{Place::Merge, "merge"},
                               std::pair{Place::Stamps, "stamps"}, std::pair{Place::Codes, "codes"},
                               std::pair{Place::About, "about"}};
    for (const auto& [place, name] : names)
        if (destination && destination->is(place))
            return name;
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

QJsonObject told(const StampPlacement& placement)
{
    return {{"id", placement.id.toString(QUuid::WithoutBraces)},
            {"stamp", placement.stampID.toString(QUuid::WithoutBraces)},
            {"center", QJsonArray{placement.center.x(), placement.center.y()}},
            {"width", placement.width},
            {"rotation", placement.rotation}};
}

QJsonObject told(const PageItem& page, const QSizeF& size)
{
    QJsonArray stamps;
    for (const StampPlacement& placement : page.stamps)
        stamps.append(told(placement));
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

} // namespace

Verbs stateVerbs()
{
    return {{"state", tellState}};
}

} // namespace folvane::driver
