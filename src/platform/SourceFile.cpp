#include "platform/SourceFile.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <limits>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace folvane {

namespace {

// More than any set of documents needs, and no burden where the hard limit is in the millions.
constexpr rlim_t enoughDescriptors = 65536;

FileIdentity identityIn(const struct stat& status)
{
    return {quint64(status.st_dev), quint64(status.st_ino)};
}

bool sameTime(const timespec& a, const timespec& b)
{
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

} // namespace

std::shared_ptr<SourceFile> SourceFile::open(const QUrl& url)
{
    if (!url.isLocalFile())
        return nullptr;
    const int descriptor =
        ::open(QFile::encodeName(url.toLocalFile()).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return nullptr;
    struct stat status{};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(descriptor);
        return nullptr;
    }
    return std::shared_ptr<SourceFile>(new SourceFile(descriptor, status));
}

SourceFile::~SourceFile()
{
    ::close(m_descriptor);
}

qint64 SourceFile::read(qint64 offset, char* to, qint64 n) const
{
    if (offset < 0 || n < 0 || offset > std::numeric_limits<off_t>::max() - n)
        return -1;
    qint64 done = 0;
    while (done < n) {
        const ssize_t got = ::pread(m_descriptor, to + done, size_t(n - done), offset + done);
        if (got < 0 && errno != EINTR)
            return -1;
        if (got == 0)
            break;
        done += std::max<ssize_t>(got, 0);
    }
    return done;
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
    return ::fstat(m_descriptor, &now) == 0 && now.st_size == m_atOpening.st_size
           && sameTime(now.st_mtim, m_atOpening.st_mtim);
}

FileIdentity SourceFile::identity() const
{
    return identityIn(m_atOpening);
}

std::optional<FileIdentity> SourceFile::identityOf(const QUrl& url)
{
    struct stat status{};
    if (!url.isLocalFile() || ::stat(QFile::encodeName(url.toLocalFile()).constData(), &status) != 0)
        return std::nullopt;
    return identityIn(status);
}

SourceDevice::SourceDevice(std::shared_ptr<const SourceFile> source) : m_source(std::move(source))
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
    const qint64 got = m_source->read(m_next, to, n);
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
