#include "stamps/ReadyStamp.h"
#include "stamps/ReadyStampRenderer.h"
#include "verbs.h"

#include <algorithm>

// The stamp library, and stamps on pages.

namespace folvane::driver {

namespace {

QString text(const QUuid& id)
{
    return id.toString(QUuid::WithoutBraces);
}

QUuid uuid(const Call& call, const char* field)
{
    return QUuid::fromString(call.request.get<QString>(field));
}

StampRecord stampIn(const Call& call)
{
    const std::optional<StampRecord> record = call.model().stamps.record(uuid(call, "stamp"));
    return record ? *record : throw BadRequest(QStringLiteral("there is no such stamp"));
}

QJsonObject told(const StampLibrary& library, const StampRecord& record)
{
    return {{"id", text(record.id)},
            {"name", record.name},
            {"pixelWidth", record.pixelWidth},
            {"pixelHeight", record.pixelHeight},
            {"path", library.files()[record.id].toLocalFile()}};
}

/// What the library said of its last change, which it keeps.
void takeFailure(Call& call, StampLibrary& library)
{
    if (library.errorMessage.value())
        call.reply.outcome = Outcome::Failed;
    call.reply.error = orNull(library.errorMessage.value());
    library.errorMessage = std::nullopt;
}

void add(Call& call, const StampMaker::Stamp& stamp, const QString& name, const QUuid& id)
{
    StampLibrary& library = call.model().stamps;
    if (const std::optional<StampRecord> record = library.add(stamp, name, id))
        call.tell("record", told(library, *record));
    takeFailure(call, library);
}

QCoro::Task<> makeStamp(CallPtr call)
{
    const auto source = call->request.get<QUrl>("from");
    const auto name = call->request.get<QString>("name", QString());
    try {
        QCoro::Task<StampMaker::Stamp> making =
            StampMaker::shared().makeStamp(source, call->task.get_token());
        const StampMaker::Stamp made = co_await making;
        add(*call, made, name, QUuid::createUuid());
    } catch (const StampMaker::StampError& error) {
        call->reply.outcome = Outcome::Failed;
        call->reply.error = error.errorDescription();
    } catch (const Cancelled&) {
        call->reply.outcome = Outcome::Cancelled;
    }
}

void readyStamp(Call& call)
{
    const auto word = call.request.get<QString>("word", QString()),
               date = call.request.get<QString>("date", QString());
    const StampInk ink = stampInk(call.request.get<QString>("ink", rawText(StampInk::Red)));
    if (const auto stamp = ReadyStampRenderer::render(word, date, ink))
        add(call, *stamp, readyStampName(word, date), ReadyStampRenderer::stampID(word, date, ink));
    else
        call.reply.outcome = Outcome::Refused;
}

void stamps(Call& call)
{
    const StampLibrary& library = call.model().stamps;
    QJsonArray records;
    for (const StampRecord& record : library.stamps.value())
        records.append(told(library, record));
    call.tell("stamps", records);
}

void renameStamp(Call& call)
{
    call.model().stamps.rename(stampIn(call).id, call.request.get<QString>("name"));
    takeFailure(call, call.model().stamps);
}

void deleteStamp(Call& call)
{
    call.model().deleteStamp(stampIn(call).id);
    takeFailure(call, call.model().stamps);
}

/// With what the request says of it.
StampPlacement changed(const Call& call, StampPlacement placement)
{
    const auto center = call.request.list<double>("center");
    if (center.size() == 2)
        placement.center = {center[0], center[1]};
    placement.width = call.request.get<double>("width", placement.width);
    placement.rotation = call.request.get<double>("rotation", placement.rotation);
    return placement;
}

void place(Call& call)
{
    const StampRecord stamp = stampIn(call);
    const QUuid page = call.page("page").id;
    if (const std::optional<StampPlacement> placed = call.model().place(stamp, call.file(), page)) {
        const StampPlacement wanted = changed(call, *placed);
        call.model().update(wanted, call.file(), page);
        call.tell("placement", toldPlacement(wanted));
    }
}

StampPlacement placementIn(const Call& call)
{
    const PageItem page = call.page("page");
    const auto found = std::ranges::find(page.stamps, uuid(call, "placement"), &StampPlacement::id);
    return found != page.stamps.end() ? *found
                                      : throw BadRequest(QStringLiteral("there is no such placement"));
}

void updateStamp(Call& call)
{
    const StampPlacement wanted = changed(call, placementIn(call));
    call.model().update(wanted, call.file(), call.page("page").id);
    call.tell("placement", toldPlacement(wanted));
}

void removeStamp(Call& call)
{
    call.model().remove(placementIn(call).id, call.file(), call.page("page").id);
}

void addToAll(Call& call)
{
    call.model().addToAllPages(placementIn(call), call.file(), call.page("page").id);
}

} // namespace

Verbs stampVerbs()
{
    return {{"makeStamp", makeStamp},
            {"readyStamp", atOnce(readyStamp)},
            {"stamps", atOnce(stamps)},
            {"renameStamp", atOnce(renameStamp)},
            {"deleteStamp", atOnce(deleteStamp)},
            {"place", atOnce(place)},
            {"updateStamp", atOnce(updateStamp)},
            {"removeStamp", atOnce(removeStamp)},
            {"addToAll", atOnce(addToAll)}};
}

} // namespace folvane::driver
