#include "Call.h"

#include <QFileInfo>

#include <utility>

namespace folvane::driver {

namespace {

const PageItem& pageAt(int position, const OpenFile& file)
{
    const std::vector<PageItem>& pages = file.pages.value();
    if (position < 1 || size_t(position) > pages.size())
        throw BadRequest(QStringLiteral("there is no page %1").arg(position));
    return pages[size_t(position) - 1];
}

} // namespace

Call::Call(Program& ofProgram, Request asked)
    : program(ofProgram), request(std::move(asked)), passwords(request)
{
    m_ended.start();
}

OpenFilePtr Call::file() const
{
    const int place = request.get<int>("file");
    const QList<OpenFilePtr> files = model().files.value();
    if (place < 0 || place >= files.size())
        throw BadRequest(QStringLiteral("there is no document %1").arg(place));
    return files[place];
}

const PageItem& Call::page(const char* field, const OpenFile& file) const
{
    return pageAt(request.get<int>(field), file);
}

QSet<QUuid> Call::pages(const OpenFile& file, const QSet<QUuid>& otherwise) const
{
    if (!request.has("pages"))
        return otherwise;
    QSet<QUuid> ids;
    for (const int position : request.get<QList<int>>("pages"))
        ids.insert(pageAt(position, file).id);
    return ids;
}

void Call::stopTime()
{
    using Milliseconds = std::chrono::duration<double, std::milli>;
    if (const auto started = std::exchange(m_started, std::nullopt))
        answer.milliseconds = Milliseconds(std::chrono::steady_clock::now() - *started).count();
}

void Call::takeNotices()
{
    if (const auto error = model().errorMessage.value()) {
        answer.error = error;
        model().errorMessage = std::nullopt;
    }
    if (const auto toast = model().toast.value()) {
        answer.toast = toast->text;
        model().toast = std::nullopt;
    }
}

void Call::takePanels()
{
    for (const QJsonValue& panel : takeAsked(program.panels))
        answer.panels.append(panel);
}

void Call::noteWritten(const QUrl& file)
{
    answer.saved.append(file.toLocalFile());
    answer.bytes += QFileInfo(file.toLocalFile()).size();
}

void Call::end()
{
    stopTime();
    takeNotices();
    takePanels();
    for (const QJsonValue& prompt : passwords.asked())
        answer.prompts.append(prompt);
    if (!answer.outcome && answer.error)
        answer.outcome = withError;
    else if (!answer.outcome && passwords.wasCancelled())
        answer.outcome = Outcome::Cancelled;
    m_ended.finish();
}

} // namespace folvane::driver
