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

/// Writes the bytes in one go straight to the place, replacing what is there. Blocks: called through
/// inBackground(). One file is written at a time, whichever thread asks. Throws WriteError; a failure while
/// writing may leave a part of the file, one at opening leaves the place as it was.
void writeFile(const QUrl& target, const QByteArray& bytes);

} // namespace folvane
