#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <exception>

namespace folvane {

/// A file that could not be written. The text is the system's sentence, such as "No space left on device".
class WriteError : public std::exception {
public:
    explicit WriteError(const QString& text) : m_text(text), m_what(text.toUtf8()) {}

    const QString& text() const { return m_text; }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    QString m_text;
    QByteArray m_what;
};

// Both write the bytes in one go straight to the place, and block: they are called through inBackground(). One file is
// written at a time, whichever thread asks. Room on the disk is reserved before the first byte is touched, so that a
// full disk, a quota or a limit leaves what stands there as it is. A new file that fails is removed again. They throw
// WriteError.

/// Replaces what is there, in place: links to it, its owner and its rights stay. Only a disk that breaks while it is
/// written to can spoil it.
void writeFile(const QUrl& target, const QByteArray& bytes);

/// False, and nothing is done, when something has this name already.
bool writeNewFile(const QUrl& target, const QByteArray& bytes);

} // namespace folvane
