#include "platform/files/writeFile.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <mutex>
#include <string>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace folvane {

namespace {

constexpr qint64 bytesOfAStatBlock = 512;

[[noreturn]] void throwSystemError(int error)
{
    throw WriteError(qt_error_string(error));
}

/// A file on its way to its new content. Steps give the system's error number, 0 when all went well.
class Writing {
public:
    Writing(int descriptor, bool isNew) : m_descriptor(descriptor), m_isNew(isNew)
    {
        m_isRegular = ::fstat(descriptor, &m_before) == 0 && S_ISREG(m_before.st_mode);
        m_isNew = m_isNew && m_before.st_size == 0; // somebody else may have been quicker
    }
    Q_DISABLE_COPY_MOVE(Writing)
    ~Writing() { close(); }

    /// Takes the room on the disk, and nothing else.
    int reserve(qint64 size) const;
    int write(const QByteArray& bytes) const;
    /// What was longer before ends with the new bytes.
    int cut(qint64 size) const { return m_isRegular && ::ftruncate(m_descriptor, size) < 0 ? errno : 0; }
    /// Network disks and quotas tell only when a descriptor is closed: another one of the same file does.
    int settle() const;
    int close() { return m_descriptor >= 0 && ::close(std::exchange(m_descriptor, -1)) < 0 ? errno : 0; }
    /// Leaves nothing behind of a file that was not there before.
    void giveUp() const;

private:
    int reserveByAsking(qint64 size) const;

    int m_descriptor;
    bool m_isNew;
    bool m_isRegular;
    struct stat m_before{};
};

int Writing::reserve(qint64 size) const
{
    if (!m_isRegular || size == 0)
        return 0;
    rlimit limit{};
    if (::getrlimit(RLIMIT_FSIZE, &limit) == 0 && static_cast<rlim_t>(size) > limit.rlim_cur)
        return EFBIG; // beyond it a signal would end the process
    int result = 0;
    do
        result = ::fallocate(m_descriptor, FALLOC_FL_KEEP_SIZE, 0, size);
    while (result < 0 && errno == EINTR);
    if (result == 0)
        return 0;
    const int error = errno;
    if (error == EOPNOTSUPP || error == ENOSYS)
        return reserveByAsking(size);
    cut(m_before.st_size); // gives back what was reserved so far
    return error;
}

// Others may take the room meanwhile, but that is all that such file systems offer.
int Writing::reserveByAsking(qint64 size) const
{
    struct statvfs space{};
    if (::fstatvfs(m_descriptor, &space) != 0 || space.f_blocks == 0)
        return 0; // it does not tell
    const qint64 own = m_before.st_blocks * bytesOfAStatBlock;
    const qint64 missing =
        (std::max<qint64>(size - own, 0) + qint64(space.f_frsize) - 1) / qint64(space.f_frsize);
    return static_cast<fsblkcnt_t>(missing) > space.f_bavail ? ENOSPC : 0;
}

int Writing::write(const QByteArray& bytes) const
{
    for (qint64 done = 0; done < bytes.size();) {
        const ssize_t written = ::write(m_descriptor, bytes.constData() + done, size_t(bytes.size() - done));
        if (written < 0 && errno != EINTR)
            return errno;
        done += std::max<ssize_t>(written, 0);
    }
    return 0;
}

int Writing::settle() const
{
    const int other = ::fcntl(m_descriptor, F_DUPFD_CLOEXEC, 0);
    return other >= 0 && ::close(other) < 0 ? errno : 0;
}

// Found by its descriptor: a link may have led here, and the name may stand for another file by now.
void Writing::giveUp() const
{
    if (!m_isNew || !m_isRegular)
        return;
    std::error_code unknown;
    const std::filesystem::path path =
        std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(m_descriptor), unknown);
    struct stat named{};
    if (::lstat(path.c_str(), &named) == 0 && named.st_dev == m_before.st_dev
        && named.st_ino == m_before.st_ino)
        ::unlink(path.c_str());
}

// A pipe that nobody reads fails instead of blocking; regular files know no difference.
int opened(const QUrl& target, int flags)
{
    const QByteArray path = QFile::encodeName(target.toLocalFile());
    return ::open(path.constData(), O_WRONLY | O_CLOEXEC | O_NONBLOCK | flags, 0666);
}

void fill(Writing& file, const QByteArray& bytes)
{
    int error = file.reserve(bytes.size());
    error = error ? error : file.write(bytes);
    error = error ? error : file.cut(bytes.size());
    error = error ? error : file.settle();
    if (error)
        file.giveUp();
    const int closing = file.close();
    if (error || closing)
        throwSystemError(error ? error : closing);
}

std::unique_lock<std::mutex> turnToWrite(const QUrl& target)
{
    if (!target.isLocalFile())
        throw WriteError(
            QCoreApplication::translate("writeFile", "The place is not a folder on this computer."));
    static std::mutex oneAtATime;
    return std::unique_lock(oneAtATime);
}

} // namespace

void writeFile(const QUrl& target, const QByteArray& bytes)
{
    const auto turn = turnToWrite(target);
    int descriptor = opened(target, 0);
    const bool isNew = descriptor < 0 && errno == ENOENT;
    if (isNew)
        descriptor = opened(target, O_CREAT);
    if (descriptor < 0)
        throwSystemError(errno);
    Writing file(descriptor, isNew);
    fill(file, bytes);
}

bool writeNewFile(const QUrl& target, const QByteArray& bytes)
{
    const auto turn = turnToWrite(target);
    const int descriptor = opened(target, O_CREAT | O_EXCL);
    if (descriptor < 0 && errno == EEXIST)
        return false;
    if (descriptor < 0)
        throwSystemError(errno);
    Writing file(descriptor, true);
    fill(file, bytes);
    return true;
}

} // namespace folvane
