#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QUrl>

#include <memory>
#include <optional>

#include <sys/stat.h>

namespace folvane {

/// Which file it is, whatever path or link leads there.
struct FileIdentity {
    quint64 device = 0;
    quint64 inode = 0;
    bool operator==(const FileIdentity&) const = default;
};

/// A user's file, held open by its descriptor: it goes on being readable when it is replaced or deleted on
/// disk. It is never written and never mapped (a mapping of a file that gets cut kills the process). Any
/// thread may read.
class SourceFile {
public:
    /// Null when the file cannot be opened or is not a regular file. Does not wait for pipes.
    static std::shared_ptr<SourceFile> open(const QUrl& url);
    ~SourceFile();
    Q_DISABLE_COPY_MOVE(SourceFile)

    /// Bytes at opening.
    qint64 size() const { return m_atOpening.st_size; }
    /// Reads n bytes at offset: the number read, less only at the end of the file, -1 on an error.
    qint64 read(qint64 offset, char* to, qint64 n) const;
    /// The whole file; nothing when it is longer than limit or cannot be read to the size it had at opening.
    QByteArray readAll(qint64 limit) const;
    /// False once the file was cut or rewritten in place: size or time of change differ from those at
    /// opening.
    bool unchanged() const;

    FileIdentity identity() const;
    /// Follows links; nothing when no file is there.
    static std::optional<FileIdentity> identityOf(const QUrl& url);

private:
    SourceFile(int descriptor, const struct stat& atOpening)
        : m_descriptor(descriptor), m_atOpening(atOpening)
    {
    }

    int m_descriptor;
    struct stat m_atOpening;
};

/// A source for readers that want a device. Each device has an offset of its own, so that many can read one
/// source.
class SourceDevice final : public QIODevice {
    Q_OBJECT
public:
    /// Opens itself for reading.
    explicit SourceDevice(std::shared_ptr<const SourceFile> source);

    qint64 size() const override;
    bool seek(qint64 offset) override;

protected:
    qint64 readData(char* to, qint64 n) override;
    qint64 writeData(const char* from, qint64 n) override;

private:
    std::shared_ptr<const SourceFile> m_source;
    qint64 m_next = 0; ///< where the next block is read; pos() lags behind it by what is buffered
};

/// Lets the process hold many sources open, as far as the system allows. Called once at start.
void raiseDescriptorLimit();

} // namespace folvane
