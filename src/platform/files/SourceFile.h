#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QUrl>

#include <atomic>
#include <memory>
#include <optional>
#include <stop_token>

namespace folvane {

/// Which file it is, whatever path or link leads there.
struct FileIdentity {
    quint64 device = 0;
    quint64 inode = 0;
    bool operator==(const FileIdentity&) const = default;
};

/// A file as it stood at one moment: it is another one once it was replaced, cut or rewritten.
struct FileVersion {
    FileIdentity file;
    qint64 size = 0;
    qint64 modified = 0; ///< nanoseconds since 1970
    bool operator==(const FileVersion&) const = default;
};

/// A user's file, held open by its descriptor: it goes on being readable when it is replaced or deleted on
/// disk. It is never written and never mapped (a mapping of a file that gets cut kills the process). Any
/// thread may read.
class SourceFile {
public:
    struct Opening;

    /// Regular files only; does not wait for pipes. Leaves the last descriptors of the process to others: what draws,
    /// writes and asks the user needs some of its own.
    static Opening tryToOpen(const QUrl& url);
    ~SourceFile();
    Q_DISABLE_COPY_MOVE(SourceFile)

    /// Bytes at opening.
    qint64 size() const { return m_atOpening.size; }
    /// Reads n bytes at offset: the number read, less only where the file ended at opening, -1 on an error. That it
    /// ends earlier by now is an error, too.
    qint64 read(qint64 offset, char* to, qint64 n) const;
    /// How many reads failed so far. Libraries pass over a failed read in many ways; whoever uses what they made of
    /// the file looks whether this has grown meanwhile.
    quint64 failedReads() const { return m_failedReads; }
    /// The whole file; nothing when it is longer than limit or cannot be read to the size it had at opening.
    QByteArray readAll(qint64 limit) const;
    /// False once the file was cut or rewritten in place: size or time of change differ from those at
    /// opening.
    bool unchanged() const;

    FileIdentity identity() const { return m_atOpening.file; }
    FileVersion version() const { return m_atOpening; }
    /// Follows links; nothing when no file is there.
    static std::optional<FileIdentity> identityOf(const QUrl& url);
    static std::optional<FileVersion> versionOf(const QUrl& url);

private:
    SourceFile(int descriptor, const FileVersion& atOpening)
        : m_descriptor(descriptor), m_atOpening(atOpening)
    {
    }

    qint64 readFailed() const;

    int m_descriptor;
    FileVersion m_atOpening;
    mutable std::atomic<quint64> m_failedReads = 0;
};

/// How an opening went: the file, or null and the system's number of what stood in the way.
struct SourceFile::Opening {
    std::shared_ptr<SourceFile> file;
    int error = 0;
};

/// A source for readers that want a device. Each device has an offset of its own, so that many can read one
/// source.
class SourceDevice final : public QIODevice {
    Q_OBJECT
public:
    /// Opens itself for reading. After a stop nothing can be read any more.
    explicit SourceDevice(std::shared_ptr<const SourceFile> source, std::stop_token stop = {});

    qint64 size() const override;
    bool seek(qint64 offset) override;

protected:
    qint64 readData(char* to, qint64 n) override;
    qint64 writeData(const char* from, qint64 n) override;

private:
    std::shared_ptr<const SourceFile> m_source;
    std::stop_token m_stop;
    qint64 m_next = 0; ///< where the next block is read; pos() lags behind it by what is buffered
};

/// Lets the process hold many sources open, as far as the system allows. Called once at start.
void raiseDescriptorLimit();

} // namespace folvane
