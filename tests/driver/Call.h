#pragma once

#include "Answer.h"
#include "PasswordScript.h"
#include "Program.h"
#include "Request.h"

#include <QFuture>
#include <QPromise>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace folvane::driver {

/// One request being carried out.
class Call {
public:
    Call(Program& program, Request request);

    const Request request;
    Answer answer;
    std::stop_source task; ///< of the model's job that the request started, if any

    Program& program() const { return m_program; }
    AppModel& model() const { return m_program.model; }
    PasswordScript& passwords() { return m_passwords; }
    const PasswordScript& passwords() const { return m_passwords; }

    /// The document that `file` names.
    OpenFilePtr file() const;

    /// Between the two runs the time that the answer tells. The first stop holds.
    void startTime();
    void stopTime();
    /// Takes the model's error and toast into the answer, and away from the model.
    void takeNotices();
    void takePanels();
    /// Tells a file that the request has written.
    void noteWritten(const QUrl& file);

    QFuture<void> ended() const { return m_ended.future(); }
    bool hasEnded() const { return m_ended.future().isFinished(); }
    void end() { m_ended.finish(); }

private:
    Program& m_program;
    PasswordScript m_passwords;
    std::optional<std::chrono::steady_clock::time_point> m_started;
    mutable QPromise<void> m_ended;
};

} // namespace folvane::driver
