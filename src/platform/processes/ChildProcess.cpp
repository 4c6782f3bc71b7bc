#include "platform/processes/ChildProcess.h"

#include "platform/processes/processTree.h"

#include <QFile>

#include <cerrno>
#include <csignal>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

namespace folvane {

namespace {

/// Which descriptors a tool begins with.
class SpawnFiles {
public:
    SpawnFiles(const OwnedDescriptor& output, const OwnedDescriptor& errors)
    {
        ::posix_spawn_file_actions_init(&m_actions);
        ::posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_adddup2(&m_actions, output.number(), STDOUT_FILENO);
        ::posix_spawn_file_actions_adddup2(&m_actions, errors.number(), STDERR_FILENO);
        ::posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1);
    }
    ~SpawnFiles() { ::posix_spawn_file_actions_destroy(&m_actions); }
    Q_DISABLE_COPY_MOVE(SpawnFiles)

    const posix_spawn_file_actions_t* get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions;
};

/// No signal is ignored or held back because it is so in this program: a tool has to hear when it shall end.
class SpawnSignals {
public:
    SpawnSignals()
    {
        sigset_t all, none;
        ::sigfillset(&all);
        ::sigemptyset(&none);
        ::posix_spawnattr_init(&m_attributes);
        ::posix_spawnattr_setsigdefault(&m_attributes, &all);
        ::posix_spawnattr_setsigmask(&m_attributes, &none);
        ::posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    }
    ~SpawnSignals() { ::posix_spawnattr_destroy(&m_attributes); }
    Q_DISABLE_COPY_MOVE(SpawnSignals)

    const posix_spawnattr_t* get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes;
};

QList<QByteArray> words(const ProcessRunner::Command& command)
{
    QList<QByteArray> all{QFile::encodeName(command.path)};
    for (const QString& argument : command.arguments)
        all.append(QFile::encodeName(argument));
    return all;
}

QList<QByteArray> variables(const Environment& extra)
{
    Environment environment = cleanEnvironment();
    environment.insert(extra);
    QList<QByteArray> all;
    for (const auto& [name, value] : environment.asKeyValueRange())
        all.append(name + '=' + value);
    return all;
}

/// As the system takes lists; valid as long as the texts.
std::vector<char*> pointers(QList<QByteArray>& texts)
{
    std::vector<char*> all;
    for (QByteArray& text : texts)
        all.push_back(text.data());
    all.push_back(nullptr);
    return all;
}

pid_t spawned(const ProcessRunner::Command& command, const SpawnFiles& files)
{
    QList<QByteArray> arguments = words(command), environment = variables(command.extraEnvironment);
    const SpawnSignals signalling;
    pid_t id = 0;
    const int error = ::posix_spawn(&id, arguments.front().constData(), files.get(), signalling.get(),
                                    pointers(arguments).data(), pointers(environment).data());
    if (error)
        throw ProcessRunner::Failure(qt_error_string(error));
    return id;
}

} // namespace

ChildProcess::ChildProcess(const ProcessRunner::Command& command, const OwnedDescriptor& output,
                           const OwnedDescriptor& errors)
    : m_id(spawned(command, {output, errors})), m_held(holdProcess(m_id))
{
    if (m_held)
        return;
    const int error = errno;
    ::kill(m_id, SIGKILL);
    ::waitpid(m_id, nullptr, 0);
    throw ProcessRunner::Failure(qt_error_string(error));
}

bool ChildProcess::hasEnded()
{
    if (!m_held)
        return true;
    siginfo_t end{};
    const bool isOurs = ::waitid(P_PIDFD, id_t(m_held.number()), &end, WEXITED | WNOHANG) == 0;
    if (isOurs && end.si_pid == 0)
        return false;
    if (isOurs)
        m_exitCode = end.si_status;
    m_held = OwnedDescriptor();
    return true;
}

} // namespace folvane
