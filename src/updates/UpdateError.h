#pragma once

#include <QString>

#include <exception>

namespace folvane {

/// Why a check for updates came to no result, as a sentence for the user.
class UpdateError : public std::exception {
public:
    explicit UpdateError(const QString& text) : m_text(text), m_what(text.toUtf8()) {}

    /// The sentence around the words of whoever met the error.
    static UpdateError because(const QString& words);

    const QString& text() const { return m_text; }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    QString m_text;
    QByteArray m_what;
};

} // namespace folvane
