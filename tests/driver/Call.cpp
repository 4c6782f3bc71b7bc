#include "Call.h"

#include <QFileInfo>

#include <array>
#include <utility>

namespace folvane::driver {

namespace {

constexpr std::array outcomes{"done", "refused", "cancelled", "dropped", "failed"};

PageItem pageAt(int position, const OpenFile& file)
{
    const std::vector<PageItem>& pages = file.pages.value();
    if (position < 1 || size_t(position) > pages.size())
        throw BadRequest(QStringLiteral("there is no page %1").arg(position));
    return pages[size_t(position) - 1];
}

} // namespace

QJsonObject Reply::toJson() const
{
    if (!bad.isEmpty())
        return {{"ok", false}, {"bad", bad}};
    QJsonObject json = fields;
    json["ok"] = true;
    json["outcome"] = outcomes[size_t(outcome.value_or(Outcome::Done))];
    json["error"] = error;
    json["toast"] = toast;
    json["ms"] = milliseconds;
    json["prompts"] = prompts;
    json["panels"] = panels;
    json["saved"] = saved;
    json["bytes"] = bytes;
    return json;
}

Call::Call(Program& ofProgram, const Request& asked) : program(ofProgram), request(asked), passwords(asked) {}

OpenFilePtr Call::file() const
{
    const int place = request.get<int>("file");
    const QList<OpenFilePtr> files = model().files.value();
    if (place < 0 || place >= files.size())
        throw BadRequest(QStringLiteral("there is no document %1").arg(place));
    return files[place];
}

PageItem Call::page(const char* field) const
{
    return pageAt(request.get<int>(field), *file());
}

QSet<QUuid> Call::pages(const QSet<QUuid>& otherwise) const
{
    if (!request.has("pages"))
        return otherwise;
    QSet<QUuid> ids;
    for (const int position : request.get<QList<int>>("pages"))
        ids.insert(pageAt(position, *file()).id);
    return ids;
}

void Call::stopTime()
{
    using Milliseconds = std::chrono::duration<double, std::milli>;
    if (const auto started = std::exchange(m_started, std::nullopt))
        reply.milliseconds = Milliseconds(std::chrono::steady_clock::now() - *started).count();
}

void Call::takeNotices()
{
    if (const auto error = model().errorMessage.value())
        reply.error = *error;
    if (const auto toast = model().toast.value())
        reply.toast = toast->text;
    model().errorMessage = std::nullopt;
    model().toast = std::nullopt;
}

void Call::takePanels()
{
    for (const AskedPanel& panel : std::exchange(program.panels.asked, {}))
        reply.panels.append(told(panel));
}

void Call::noteWritten(const QUrl& file)
{
    reply.saved.append(file.toLocalFile());
    reply.bytes += QFileInfo(file.toLocalFile()).size();
}

void Call::end()
{
    stopTime();
    takeNotices();
    takePanels();
    if (!reply.outcome && !reply.error.isNull())
        reply.outcome = withError;
    else if (!reply.outcome && passwords.wasCancelled())
        reply.outcome = Outcome::Cancelled;
    ended.give(true);
}

} // namespace folvane::driver
