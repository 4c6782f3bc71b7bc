#include "verbs.h"

#include "documents/statusLine.h"
#include "engine/PDFEngine.h"
#include "shownFile.h"

#include <QSizeF>

#include <memory>
#include <vector>

namespace folvane::driver {

namespace {

/// What the answer tells of one document, taken at one moment.
struct Snapshot {
    OpenFilePtr file;
    std::vector<PageItem> pages;
    std::vector<QSizeF> sizes; ///< displayed, in points
};

QString name(Destination::Place place)
{
    switch (place) {
    case Destination::Place::Home: return QStringLiteral("home");
    case Destination::Place::Merge: return QStringLiteral("merge");
    case Destination::Place::Stamps: return QStringLiteral("stamps");
    case Destination::Place::Codes: return QStringLiteral("codes");
    case Destination::Place::About: return QStringLiteral("about");
    }
    Q_UNREACHABLE();
}

QJsonValue name(const std::optional<Destination>& destination)
{
    using Place = Destination::Place;
    if (!destination)
        return QJsonValue::Null;
    for (const Place place : {Place::Home, Place::Merge, Place::Stamps, Place::Codes, Place::About})
        if (destination->is(place))
            return name(place);
    return QStringLiteral("file");
}

QJsonValue name(const std::optional<FileSheet>& sheet)
{
    if (!sheet)
        return QJsonValue::Null;
    switch (sheet->kind) {
    case FileSheet::Kind::Compress: return QStringLiteral("compress");
    case FileSheet::Kind::Split: return QStringLiteral("split");
    case FileSheet::Kind::Password: return QStringLiteral("password");
    case FileSheet::Kind::ExportImages: return QStringLiteral("exportImages");
    }
    Q_UNREACHABLE();
}

QJsonArray mergeRows(const AppModel& model)
{
    QJsonArray rows;
    for (const MergeItem& item : model.merge.items.value())
        rows.append(QJsonObject{{QStringLiteral("name"), item.name},
                                {QStringLiteral("pages"), qint64(item.pages.size())}});
    return rows;
}

QJsonObject around(const AppModel& model)
{
    const auto busy = model.busy.value();
    const OpenFilePtr closing = model.closingFile.value();
    return {{QStringLiteral("destination"), name(model.destination.value())},
            {QStringLiteral("file"), shownFile(model)},
            {QStringLiteral("busy"), busy ? QJsonValue(busy->title) : QJsonValue::Null},
            {QStringLiteral("sheet"), name(model.sheet.value())},
            {QStringLiteral("closing"), closing ? placeOf(model, closing->id) : QJsonValue::Null},
            {QStringLiteral("merge"), mergeRows(model)}};
}

QJsonArray positions(const Snapshot& document)
{
    const QSet<QUuid> selection = document.file->selection.value();
    QJsonArray selected;
    for (size_t i = 0; i < document.pages.size(); ++i)
        if (selection.contains(document.pages[i].id))
            selected.append(qint64(i) + 1);
    return selected;
}

QJsonObject stamp(const StampPlacement& placement)
{
    return {{QStringLiteral("id"), placement.id.toString(QUuid::WithoutBraces)},
            {QStringLiteral("stamp"), placement.stampID.toString(QUuid::WithoutBraces)},
            {QStringLiteral("center"), QJsonArray{placement.center.x(), placement.center.y()}},
            {QStringLiteral("width"), placement.width},
            {QStringLiteral("rotation"), placement.rotation}};
}

void tellPage(JsonLine& line, const PageItem& page, const QSizeF& size)
{
    QJsonArray stamps;
    for (const StampPlacement& placement : page.stamps)
        stamps.append(stamp(placement));
    line.field(QStringLiteral("id"), page.id.toString(QUuid::WithoutBraces));
    line.field(QStringLiteral("path"), page.source.url.toLocalFile());
    line.field(QStringLiteral("index"), page.source.index);
    line.field(QStringLiteral("turn"), page.turn);
    line.field(QStringLiteral("width"), size.width());
    line.field(QStringLiteral("height"), size.height());
    line.field(QStringLiteral("stamps"), stamps);
}

void tellDocument(JsonLine& line, const Snapshot& document)
{
    const OpenFile& file = *document.file;
    line.field(QStringLiteral("id"), file.id.toString(QUuid::WithoutBraces));
    line.field(QStringLiteral("url"), file.url.toString(QUrl::FullyEncoded));
    line.field(QStringLiteral("name"), file.name);
    line.field(QStringLiteral("isPDF"), file.isPDF);
    line.field(QStringLiteral("isEdited"), file.isEdited.value());
    line.field(QStringLiteral("locked"), file.password.has_value());
    line.field(QStringLiteral("selection"), positions(document));
    line.field(QStringLiteral("statusLine"), statusLine(file));
    const auto page = [&](int i) { tellPage(line, document.pages[size_t(i)], document.sizes[size_t(i)]); };
    line.objects(QStringLiteral("pages"), int(document.pages.size()), page);
}

QCoro::Task<Snapshot> take(PDFEngine* engine, OpenFilePtr file)
{
    Snapshot snapshot{file, file->pages.value(), {}};
    snapshot.sizes.reserve(snapshot.pages.size());
    for (const PageItem& page : snapshot.pages) {
        QCoro::Task<QSizeF> measuring = engine->displaySize(page.source, page.turn);
        const QSizeF size = co_await measuring;
        snapshot.sizes.push_back(size);
    }
    co_return snapshot;
}

} // namespace

QCoro::Task<> tellState(CallPtr call)
{
    call->answer.fields = around(call->model());
    const QList<OpenFilePtr> files = call->model().files.value();
    const auto documents = std::make_shared<std::vector<Snapshot>>();
    call->startTime();
    for (const OpenFilePtr& file : files) {
        QCoro::Task<Snapshot> taking = take(&call->model().engine(), file);
        Snapshot snapshot = co_await taking;
        documents->push_back(std::move(snapshot));
    }
    call->stopTime();
    call->answer.rest = [documents](JsonLine& line) {
        const auto document = [&](int i) { tellDocument(line, documents->at(size_t(i))); };
        line.objects(QStringLiteral("documents"), int(documents->size()), document);
    };
}

} // namespace folvane::driver
