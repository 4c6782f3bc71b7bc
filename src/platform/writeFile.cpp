#include "platform/writeFile.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <mutex>

#include <fcntl.h>
#include <unistd.h>

namespace folvane {

namespace {

[[noreturn]] void throwSystemError(int error)
{
    throw WriteError(qt_error_string(error));
}

// A pipe that nobody reads fails instead of blocking; regular files know no difference.
int openForWriting(const QString& path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(),
                                  O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK, 0666);
    if (descriptor < 0)
        throwSystemError(errno);
    return descriptor;
}

/// The system's error number, 0 when all is written.
int writeAll(int descriptor, const QByteArray& bytes)
{
    for (qint64 done = 0; done < bytes.size();) {
        const ssize_t written = ::write(descriptor, bytes.constData() + done, size_t(bytes.size() - done));
        if (written < 0 && errno != EINTR)
            return errno;
        done += std::max<ssize_t>(written, 0);
    }
    return 0;
}

} // namespace

void writeFile(const QUrl& target, const QByteArray& bytes)
{
    if (!target.isLocalFile())
        throw WriteError(
            QCoreApplication::translate("writeFile", "The place is not a folder on this computer."));
    static std::mutex oneAtATime;
    const std::scoped_lock lock(oneAtATime);
    const int descriptor = openForWriting(target.toLocalFile());
    const int writing = writeAll(descriptor, bytes);
    const int closing = ::close(descriptor) < 0 ? errno : 0; // network disks and quotas tell only now
    if (writing != 0 || closing != 0)
        throwSystemError(writing != 0 ? writing : closing);
}

} // namespace folvane
