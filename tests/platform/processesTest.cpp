// Tools that are run, and what becomes of those that do not end.

#include "platform/processes/ProcessRunner.h"
#include "platform/processes/processTree.h"
#include "platform/tasks/Cancelled.h"

#include "support/TestFolder.h"
#include "support/await.h"

#include <QDir>
#include <QProcess>
#include <QTest>
#include <gmock/gmock.h>

#include <csignal>

#include <fcntl.h>
#include <sys/wait.h>

namespace folvane {

using namespace std::chrono_literals;
using ProcessRunner::Command;
using ProcessRunner::Output;

namespace {

/// What this program has and no tool shall get; it must stand before the first run.
const bool hasWhatToolsShallNotGet = [] {
    sigset_t signalsHeldBack;
    ::sigemptyset(&signalsHeldBack);
    ::sigaddset(&signalsHeldBack, SIGUSR2);
    return qputenv("LD_FOLVANE", "x") && qputenv("DYLD_FOLVANE", "x") && qputenv("FOLVANE_OWN", "own")
           && ::dup2(::open("/dev/zero", O_RDONLY), STDIN_FILENO) == STDIN_FILENO
           && ::signal(SIGUSR1, SIG_IGN) != SIG_ERR
           && ::pthread_sigmask(SIG_BLOCK, &signalsHeldBack, nullptr) == 0;
}();

Command shell(const QString& script, std::chrono::milliseconds timeout = 60s)
{
    return {"/bin/sh", {"-c", script}, timeout, {{"EXTRA", "extra"}}};
}

/// As the tools wrote them, a line each.
QList<pid_t> processes(const Output& output)
{
    QList<pid_t> all;
    for (const QString& line : output.standardOutput.split('\n', Qt::SkipEmptyParts))
        all.append(line.toInt());
    return all;
}

/// Nobody can wait for what its parent left behind.
bool isRunning(pid_t id)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(id));
    return file.open(QIODevice::ReadOnly) && !file.readAll().contains(") Z ");
}

struct ToolCase {
    const char* name;
    QString script;
    int exitCode;
    QString message;
};

class Tools : public testing::TestWithParam<ToolCase> {};

} // namespace

TEST_P(Tools, EndWithWhatTheySaid)
{
    const Output output = await(ProcessRunner::run(shell(GetParam().script)));
    EXPECT_EQ(std::pair(output.exitCode, output.errorMessage()),
              std::pair(GetParam().exitCode, GetParam().message));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Tools,
    testing::Values(ToolCase{"Error", "echo said; echo ' bad\n' >&2; exit 1", 1, "bad"},
                    ToolCase{"OnlyOutput", "echo said; echo >&2; exit 1", 1, "said"},
                    ToolCase{"Silent", "exit 3", 3, "Exit code 3"},
                    ToolCase{"NoInput", "head -c 9 | wc -c", 0, "0"},
                    ToolCase{"OddBytes", "printf 'a\377b'", 0, "a\uFFFDb"},
                    ToolCase{"Long", "printf " + QString("e\u0301").repeated(301), 0,
                             QString("e\u0301").repeated(300)},
                    ToolCase{"Environment", "echo $PATH $LD_FOLVANE $DYLD_FOLVANE $FOLVANE_OWN $EXTRA", 0,
                             "/usr/bin:/bin:/usr/sbin:/sbin own extra"},
                    ToolCase{"SignalHeldBack", "kill -USR2 $$", SIGUSR2, "Exit code 12"},
                    ToolCase{"SignalIgnored", "kill -USR1 $$", SIGUSR1, "Exit code 10"},
                    ToolCase{"Descriptors", "ls /proc/self/fd | wc -l", 0, "4"}), // with that of the folder
    [](const auto& row) { return std::string(row.param.name); });

TEST(ProcessRunner, KeepsWhatFitsAndLetsTheToolGoOn)
{
    const Output output = await(ProcessRunner::run(shell("head -c 70000000 /dev/zero && echo end >&2")));
    EXPECT_EQ(output.standardOutput.size(), 64 << 20);
    EXPECT_EQ(output.standardError, "end\n");
}

TEST(ProcessRunner, TellsWhyAToolDoesNotStart)
{
    const auto start = [] { await(ProcessRunner::run({"/nowhere/tool", {}, 1s})); };
    EXPECT_THAT(start, testing::Throws<ProcessRunner::Failure>(
                           testing::Property(&ProcessRunner::Failure::text, qt_error_string(ENOENT))));
}

// Side by side, because each takes its time.
TEST(ProcessRunner, EndsInTimeWithAllThatWasStarted)
{
    const auto start = std::chrono::steady_clock::now();
    const auto passed = [start] { return std::chrono::steady_clock::now() - start; };
    std::stop_source stop;
    auto overdue = ProcessRunner::run(shell("sleep 100 & echo $!; wait", 500ms));
    auto stopped = ProcessRunner::run(shell("sleep 100 & echo $!; exec sleep 100"), stop.get_token());
    auto leaving = ProcessRunner::run(shell("sleep 100 & echo $!; exit 5"));
    auto deafChild = ProcessRunner::run(shell("(trap '' TERM; exec sleep 100) & echo $!; wait", 500ms));
    auto deaf = ProcessRunner::run(
        shell("trap 'sleep 100 & echo $!' TERM; echo $$; while :; do sleep 9 & wait; done", 500ms));

    const Output tooLate = await(std::move(overdue));
    EXPECT_EQ(tooLate.errorMessage(), "The tool didn't answer in time.");
    EXPECT_LT(passed(), 1500ms);
    stop.request_stop();
    EXPECT_THROW(await(ProcessRunner::run(shell("exit 0"), stop.get_token())), Cancelled);
    const Output whenStopped = await(std::move(stopped));
    EXPECT_EQ(std::pair(whenStopped.exitCode, whenStopped.timedOut), std::pair(SIGTERM, false));
    EXPECT_LT(passed(), 1900ms);
    const Output alone = await(std::move(leaving));
    EXPECT_EQ(std::pair(alone.exitCode, alone.timedOut), std::pair(5, false));
    EXPECT_GT(passed(), 1900ms) << "its child holds the stream";
    const Output withDeafChild = await(std::move(deafChild));
    EXPECT_LT(passed(), 5s);
    EXPECT_TRUE(isRunning(processes(withDeafChild).at(0))) << "it has its five seconds";
    const Output killed = await(std::move(deaf));
    EXPECT_EQ(std::pair(killed.exitCode, killed.timedOut), std::pair(SIGKILL, true));
    EXPECT_EQ(processes(killed).size(), 2) << "the tool, and what it started when it was told";
    for (const Output& output : {tooLate, whenStopped, withDeafChild, killed})
        for (const pid_t id : processes(output))
            EXPECT_TRUE(QTest::qWaitFor([id] { return !isRunning(id); }, 2000)) << id;
    EXPECT_TRUE(isRunning(processes(alone).at(0))) << "nobody asked for its end";
    ::kill(processes(alone).at(0), SIGKILL);
}

TEST(ProcessRunner, LeavesNoDescriptorAndNoChild)
{
    const auto descriptors = [] { return QDir("/proc/self/fd").count(); };
    await(ProcessRunner::run(shell("exit 0"))); // what is made once
    const auto atStart = descriptors();
    for (int i = 0; i < std::max(50, qEnvironmentVariableIntValue("FOLVANE_RUNS")); ++i)
        await(ProcessRunner::run({"/bin/true", {}, 10s}));
    EXPECT_LE(descriptors(), atStart + 16) << "threads that wait have one each";
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "there is a child yet";
}

TEST(ProcessTree, GoesDepthFirstAndKnowsStrangers)
{
    const ProcessEntry top{10, 1, 500}, a{11, 10, 501}, b{12, 10, 502}, ofA{13, 11, 510}, ofB{9, 12, 509};
    const ProcessEntry older{14, 10, 499}, stranger{16, 1, 600}, x{20, 21, 5}, y{21, 20, 5};
    EXPECT_EQ(descendants(top, {ofB, top, a, b, ofA, older, stranger}), (std::vector{ofA, a, ofB, b}));
    EXPECT_EQ(descendants(x, {x, y}), (std::vector{x, y})) << "a loop comes to an end";
}

TEST(ProcessTree, NeverSignalsWhoGotTheNumber)
{
    const TestFolder folder;
    const QString oddName = folder.path("cat) 7 (");
    QFile::copy("/bin/cat", oddName);
    QProcess process;
    process.start(oddName, {});
    ASSERT_TRUE(process.waitForStarted());
    const ProcessEntry entry = processEntry(pid_t(process.processId())).value_or(ProcessEntry());
    EXPECT_EQ(entry.parent, ::getpid());
    signalProcess({entry.id, entry.parent, entry.start + 1}, SIGTERM);
    EXPECT_FALSE(process.waitForFinished(200));
    signalProcess(entry, SIGTERM);
    EXPECT_TRUE(process.waitForFinished());
}

} // namespace folvane
