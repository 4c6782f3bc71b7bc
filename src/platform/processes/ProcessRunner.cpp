#include "platform/processes/ProcessRunner.h"

#include "platform/processes/ToolRun.h"
#include "platform/tasks/JobQueue.h"

#include <QCoreApplication>
#include <QTextBoundaryFinder>
#include <QThreadPool>

namespace folvane::ProcessRunner {

namespace {

/// Where tools are waited for. Going away it waits for their ends, so the program leaves none behind.
struct WaitingThreads {
    static constexpr int count = 16; ///< tools that can run side by side

    WaitingThreads() { terminations.setMaxThreadCount(count); }

    QThreadPool terminations; // goes last: runs hand over to it
    JobQueue runs{QStringLiteral("tools"), count, 0};
};

WaitingThreads& threads()
{
    static WaitingThreads all;
    return all;
}

Output outputOf(const Command& command, const std::stop_token& stop)
{
    ToolRun run(command, stop);
    const Output output = run.toEnd();
    if (const std::optional<Termination> termination = run.unfinishedTermination())
        threads().terminations.start([termination] { termination->complete(); });
    return output;
}

constexpr int longestMessage = 300; // characters

/// Characters as people count them.
QString firstCharacters(const QString& text, int count)
{
    constexpr qsizetype enoughUnits = 10'000; // a finder looks at everything before it answers
    QString beginning = text.left(enoughUnits);
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, beginning);
    for (int i = 0; i < count; ++i)
        if (characters.toNextBoundary() < 0)
            return beginning;
    return beginning.left(characters.position());
}

} // namespace

QString Output::errorMessage() const
{
    if (timedOut) //: Error when a command-line tool times out
        return QCoreApplication::translate("ProcessRunner", "The tool didn't answer in time.");
    const QString errors = standardError.trimmed();
    const QString said = errors.isEmpty() ? standardOutput.trimmed() : errors;
    if (!said.isEmpty())
        return firstCharacters(said, longestMessage);
    //: Error of a command-line tool that gave no message
    return QCoreApplication::translate("ProcessRunner", "Exit code %1").arg(exitCode);
}

QCoro::Task<Output> run(Command command, std::stop_token stop)
{
    auto job = [command = std::move(command), stop] { return outputOf(command, stop); };
    return threads().runs.run(std::move(job), stop);
}

} // namespace folvane::ProcessRunner
