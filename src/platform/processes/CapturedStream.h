#pragma once

#include "platform/files/OwnedDescriptor.h"

#include <QByteArray>
#include <QString>

namespace folvane {

/// What a tool says on one of its streams, up to 64 MiB; the rest is read and dropped, so that it never has to wait.
class CapturedStream {
public:
    /// Takes the end of a pipe that is read.
    explicit CapturedStream(OwnedDescriptor pipe) : m_pipe(std::move(pipe)) {}

    /// Readable when there is more; -1 after its end.
    int descriptor() const { return m_pipe.number(); }
    bool isOpen() const { return bool(m_pipe); }
    /// Takes what is there, or learns that it is the end. Blocks when there is neither.
    void read();
    /// From UTF-8; what is none is repaired.
    QString text() const { return QString::fromUtf8(m_bytes); }

private:
    OwnedDescriptor m_pipe;
    QByteArray m_bytes;
};

} // namespace folvane
