#include "Call.h"

#include <QFileInfo>

#include <utility>

namespace folvane::driver {

Call::Call(Program& program, Request asked)
    : request(std::move(asked)), m_program(program), m_passwords(request)
{
    m_ended.start();
}

OpenFilePtr Call::file() const
{
    const int place = request.integer("file");
    const QList<OpenFilePtr> files = model().files.value();
    if (place < 0 || place >= files.size())
        throw BadRequest(QStringLiteral("there is no document %1").arg(place));
    return files[place];
}

void Call::startTime()
{
    m_started = std::chrono::steady_clock::now();
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

void Call::noteWritten(const QUrl& file)
{
    answer.saved.append(file.toLocalFile());
    answer.bytes += QFileInfo(answer.saved.last()).size();
}

void Call::takePanels()
{
    for (const QJsonValue& panel : m_program.panels.takeAsked())
        answer.panels.append(panel);
}

} // namespace folvane::driver
