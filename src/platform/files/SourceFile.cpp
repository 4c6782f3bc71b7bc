#include "platform/files/SourceFile.h"

#include <QFile>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace folvane {

namespace {

// More than any set of documents needs, and no burden where the hard limit is in the millions.
constexpr rlim_t enoughDescriptors = 65536;

/// Of the soft limit; without them neither a panel nor a helper program comes up.
constexpr rlim_t descriptorsKept = 64;

FileVersion versionIn(const struct stat& status)
{
    constexpr qint64 nanoseconds = 1'000'000'000;
    return {{quint64(status.st_dev), quint64(status.st_ino)},
            status.st_size,
            status.st_mtim.tv_sec * nanoseconds + status.st_mtim.tv_nsec};
}

/// The system gives out the lowest number that is free.
bool isOneOfTheLast(int descriptor)
{
    rlimit limit{};
    return ::getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY
           && static_cast<rlim_t>(descriptor) + std::min(descriptorsKept, limit.rlim_cur / 2)
                  >= limit.rlim_cur;
}

} // namespace

SourceFile::Opening SourceFile::tryToOpen(const QUrl& url)
{
    if (!url.isLocalFile())
        return {nullptr, ENOENT};
    const int descriptor =
        ::open(QFile::encodeName(url.toLocalFile()).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return {nullptr, errno};
    struct stat status{};
    const bool isRegular = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    if (!isRegular || isOneOfTheLast(descriptor)) {
        ::close(descriptor);
        return {nullptr, isRegular ? EMFILE : EINVAL};
    }
    return {std::shared_ptr<SourceFile>(new SourceFile(descriptor, versionIn(status))), 0};
}

SourceFile::~SourceFile()
{
    ::close(m_descriptor);
}

qint64 SourceFile::read(qint64 offset, char* to, qint64 n) const
{
    if (offset < 0 || n < 0)
        return -1;
    const qint64 wanted = std::clamp<qint64>(size() - offset, 0, n);
    for (qint64 done = 0; done < wanted;) {
        const ssize_t got = ::pread(m_descriptor, to + done, size_t(wanted - done), offset + done);
        if (got == 0 || (got < 0 && errno != EINTR))
            return readFailed();
        done += std::max<ssize_t>(got, 0);
    }
    return wanted;
}

qint64 SourceFile::readFailed() const
{
    ++m_failedReads;
    return -1;
}

QByteArray SourceFile::readAll(qint64 limit) const
{
    if (size() > limit)
        return {};
    QByteArray bytes(size(), Qt::Uninitialized);
    return read(0, bytes.data(), bytes.size()) == bytes.size() ? bytes : QByteArray();
}

bool SourceFile::unchanged() const
{
    struct stat now{};
    return ::fstat(m_descriptor, &now) == 0 && versionIn(now) == m_atOpening;
}

std::optional<FileIdentity> SourceFile::identityOf(const QUrl& url)
{
    const std::optional<FileVersion> version = versionOf(url);
    return version ? std::optional(version->file) : std::nullopt;
}

std::optional<FileVersion> SourceFile::versionOf(const QUrl& url)
{
    struct stat status{};
    if (!url.isLocalFile() || ::stat(QFile::encodeName(url.toLocalFile()).constData(), &status) != 0)
        return std::nullopt;
    return versionIn(status);
}

SourceDevice::SourceDevice(std::shared_ptr<const SourceFile> source, std::stop_token stop)
    : m_source(std::move(source)), m_stop(std::move(stop))
{
    open(QIODevice::ReadOnly);
}

qint64 SourceDevice::size() const
{
    return m_source->size();
}

bool SourceDevice::seek(qint64 offset)
{
    if (!QIODevice::seek(offset))
        return false;
    m_next = offset;
    return true;
}

qint64 SourceDevice::readData(char* to, qint64 n)
{
    const qint64 got = m_stop.stop_requested() ? -1 : m_source->read(m_next, to, n);
    m_next += std::max<qint64>(got, 0);
    return got;
}

qint64 SourceDevice::writeData(const char*, qint64)
{
    return -1;
}

void raiseDescriptorLimit()
{
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0)
        return;
    const rlim_t wanted = std::min(limit.rlim_max, enoughDescriptors);
    if (limit.rlim_cur >= wanted)
        return;
    limit.rlim_cur = wanted;
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

} // namespace folvane
