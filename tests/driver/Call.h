#pragma once

#include "Program.h"
#include "Request.h"
#include "platform/tasks/Answer.h"
#include "scripts.h"

#include <QSet>

#include <chrono>
#include <stop_token>

namespace folvane::driver {

/// How a verb ended. The README tells how each is decided.
enum class Outcome { Done, Refused, Cancelled, Dropped, Failed };

/// What a request is answered with.
struct Reply {
    QString bad; ///< why the request could not be carried out; empty when it could
    std::optional<Outcome> outcome;
    QJsonValue error; ///< null when there is none, as the toast
    QJsonValue toast;
    double milliseconds = 0;
    QJsonArray prompts;
    QJsonArray panels;
    QJsonArray saved;   ///< paths of the files written
    qint64 bytes = 0;   ///< their sizes together
    QJsonObject fields; ///< what the verb alone tells

    QJsonObject toJson() const;
};

/// One request being carried out. Its time runs from the beginning.
class Call {
public:
    Call(Program& program, const Request& request);

    Program& program;
    const Request request;
    Reply reply;
    Outcome withError = Outcome::Failed; ///< what it counts as when the model tells an error
    bool waitsForEngine = false;         ///< it ends when the engine has done all that it was asked before
    PasswordScript passwords;
    std::stop_source task; ///< of the model's job that the request started, if any
    Answer<bool> ended;

    AppModel& model() const { return program.model; }
    /// The document that `file` names.
    OpenFilePtr file() const;
    /// The page of that document at the 1-based position in the field.
    PageItem page(const char* field) const;
    /// Those at the positions in `pages`, or `otherwise` when that is left out.
    QSet<QUuid> pages(const QSet<QUuid>& otherwise) const;
    void tell(const char* name, const QJsonValue& value) { reply.fields[QLatin1String(name)] = value; }

    /// The first stop holds.
    void stopTime();
    /// Takes the model's error and toast into the reply, and away from the model.
    void takeNotices();
    void takePanels();
    /// Tells a file that the request has written.
    void noteWritten(const QUrl& file);

    /// Completes the reply.
    void end();

private:
    std::optional<std::chrono::steady_clock::time_point> m_started = std::chrono::steady_clock::now();
};

/// What is there, or null.
template <typename T>
QJsonValue orNull(const std::optional<T>& value)
{
    return value ? QJsonValue(*value) : QJsonValue();
}

} // namespace folvane::driver
