#include "codes/reading/CodeFinder.h"

#include "codes/reading/DescriptorMessage.h"
#include "codes/reading/codeMessages.h"
#include "codes/reading/greyPixels.h"
#include "platform/tasks/Cancelled.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>

namespace folvane {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

/// How long a stop may go unnoticed.
constexpr std::chrono::milliseconds glance = 50ms;

/// Starts the program with the socket as its standard input and nothing else of ours; its other output goes nowhere.
std::optional<pid_t> spawned(const QByteArray& path, const OwnedDescriptor& socket)
{
    posix_spawn_file_actions_t files;
    ::posix_spawn_file_actions_init(&files);
    ::posix_spawn_file_actions_adddup2(&files, socket.number(), STDIN_FILENO);
    ::posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
    QByteArray name = path;
    std::array<char*, 2> arguments{name.data(), nullptr};
    pid_t process = 0;
    const int error = ::posix_spawn(&process, path.constData(), &files, nullptr, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&files);
    return error == 0 ? std::optional(process) : std::nullopt;
}

/// Sends bytes and, with them, a descriptor.
bool sendWithDescriptor(int socket, PictureShape shape, const OwnedDescriptor& descriptor)
{
    DescriptorMessage<PictureShape> message;
    message.value = shape;
    cmsghdr* rights = CMSG_FIRSTHDR(&message.header);
    rights->cmsg_level = SOL_SOCKET;
    rights->cmsg_type = SCM_RIGHTS;
    rights->cmsg_len = CMSG_LEN(sizeof(int));
    const int number = descriptor.number();
    std::memcpy(CMSG_DATA(rights), &number, sizeof number);
    return ::sendmsg(socket, &message.header, MSG_NOSIGNAL) == ssize_t(sizeof shape);
}

} // namespace

/// Until when, and whether at all, an answer is awaited.
struct CodeFinder::Patience {
    Clock::time_point deadline;
    const std::stop_token& stop;

    bool waitFor(int socket) const
    {
        while (Clock::now() < deadline) {
            throwIfStopped(stop);
            pollfd readable{socket, POLLIN, 0};
            if (::poll(&readable, 1, int(glance.count())) > 0)
                return true;
        }
        return false;
    }
};

std::unique_ptr<CodeFinder> CodeFinder::start(const QString& program)
{
    std::array<int, 2> ends{-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return nullptr;
    OwnedDescriptor ours(ends[0]);
    const OwnedDescriptor theirs(ends[1]);
    const std::optional<pid_t> process = spawned(QFile::encodeName(program), theirs);
    return process ? std::unique_ptr<CodeFinder>(new CodeFinder(*process, std::move(ours))) : nullptr;
}

CodeFinder::~CodeFinder()
{
    if (m_process == 0)
        return;
    ::kill(m_process, SIGKILL);
    ::waitpid(m_process, nullptr, 0);
}

bool CodeFinder::isRunning()
{
    if (m_process != 0 && ::waitpid(m_process, nullptr, WNOHANG) != 0)
        m_process = 0;
    return m_process != 0;
}

bool CodeFinder::send(const QImage& grey)
{
    const OwnedDescriptor pixels = sharedPixels(grey);
    return pixels
           && sendWithDescriptor(
               m_socket.number(),
               {quint32(grey.width()), quint32(grey.height()), quint32(grey.bytesPerLine())}, pixels);
}

std::optional<QByteArray> CodeFinder::receive(qsizetype n, const Patience& patience)
{
    QByteArray bytes(n, Qt::Uninitialized);
    for (qsizetype have = 0; have < n;) {
        if (!patience.waitFor(m_socket.number()))
            return std::nullopt;
        const ssize_t got = ::recv(m_socket.number(), bytes.data() + have, size_t(n - have), 0);
        if (got <= 0)
            return std::nullopt;
        have += got;
    }
    return bytes;
}

std::optional<std::vector<CodeObservation>>
CodeFinder::find(const QImage& grey, std::chrono::milliseconds limit, const std::stop_token& stop)
{
    const Patience patience{Clock::now() + limit, stop};
    quint32 length = 0;
    const std::optional<QByteArray> head = send(grey) ? receive(sizeof length, patience) : std::nullopt;
    if (!head)
        return std::nullopt;
    std::memcpy(&length, head->constData(), sizeof length);
    const std::optional<QByteArray> body =
        length <= maxCodesAnswerBytes ? receive(length, patience) : std::nullopt;
    return body ? decodedCodes(*body) : std::nullopt;
}

} // namespace folvane
