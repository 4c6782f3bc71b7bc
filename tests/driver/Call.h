#pragma once

#include "Answer.h"
#include "PasswordScript.h"
#include "Program.h"
#include "Request.h"

#include <QFuture>
#include <QPromise>
#include <QSet>
#include <QUuid>

#include <chrono>
#include <memory>
#include <optional>
#include <stop_token>

namespace folvane::driver {

/// One request being carried out. Its time runs from the beginning.
class Call {
public:
    Call(Program& program, Request request);

    Program& program;
    const Request request;
    Answer answer;
    Outcome withError = Outcome::Failed; ///< what it counts as when the model tells an error
    PasswordScript passwords;
    std::stop_source task; ///< of the model's job that the request started, if any

    AppModel& model() const { return program.model; }
    /// The document that `file` names.
    OpenFilePtr file() const;
    /// The page of the document at the 1-based position in the field.
    const PageItem& page(const char* field, const OpenFile& file) const;
    /// Those at the positions in `pages`, or `otherwise` when that is left out.
    QSet<QUuid> pages(const OpenFile& file, const QSet<QUuid>& otherwise) const;
    void tell(const char* name, const QJsonValue& value) { answer.fields[QLatin1String(name)] = value; }

    /// The first stop holds.
    void stopTime();
    /// Takes the model's error and toast into the answer, and away from the model.
    void takeNotices();
    void takePanels();
    /// Tells a file that the request has written.
    void noteWritten(const QUrl& file);

    /// Completes the answer.
    void end();
    QFuture<void> ended() const { return m_ended.future(); }

private:
    std::optional<std::chrono::steady_clock::time_point> m_started = std::chrono::steady_clock::now();
    mutable QPromise<void> m_ended;
};

} // namespace folvane::driver
