#pragma once

#include "platform/processes/cleanEnvironment.h"

#include <QCoroTask>

#include <QStringList>

#include <chrono>
#include <exception>
#include <stop_token>

/// Runs tools of the system to their end.
namespace folvane::ProcessRunner {

struct Command {
    QString path; ///< absolute
    QStringList arguments;
    std::chrono::milliseconds timeout;
    Environment extraEnvironment = {}; ///< over cleanEnvironment()
};

/// How a tool ended and what it said: each text is what came in UTF-8, repaired where it was none, and 64 MiB at most.
struct Output {
    int exitCode = 0; ///< its status, or the number of the signal that ended it
    QString standardOutput = {};
    QString standardError = {};
    bool timedOut = false; ///< it was ended because it took too long

    /// A sentence for the user about a tool that failed.
    QString errorMessage() const;

    bool operator==(const Output&) const = default;
};

/// The tool could not be started. The text is the system's.
class Failure : public std::exception {
public:
    explicit Failure(const QString& text) : m_text(text), m_what(text.toUtf8()) {}

    const QString& text() const { return m_text; }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    QString m_text;
    QByteArray m_what;
};

/// Runs the tool in a clean environment without standard input. After the time-out or a stop it and all that it started are
/// told to end, and killed when they have not after five seconds. A tool that fails or was ended gives its output all the same,
/// about two seconds after its end at the latest. Throws Failure, and Cancelled when it was stopped before it began.
/// For a thread with an event loop.
QCoro::Task<Output> run(Command command, std::stop_token stop = {});

} // namespace folvane::ProcessRunner
