#pragma once

#include <QHash>
#include <QJsonArray>
#include <QStringList>

#include <optional>

namespace folvane::driver {

class Request;

/// What one request answers when it is asked for passwords, and what it was asked.
/// A question names a file without its folder: files of one name are told apart by their order.
class PasswordScript {
public:
    explicit PasswordScript(const Request& request);

    /// Whether the question can be about one of the request's files.
    bool isAbout(const QString& fileName) const;
    /// Notes the question; gives the next answer, and Cancel when there is none left.
    std::optional<QString> answer(const QString& fileName, bool wasWrong);
    const QJsonArray& asked() const { return m_asked; }
    bool wasCancelled() const { return m_cancelled; }

private:
    QHash<QString, QList<QStringList>> m_waiting; ///< by file name; of files that nothing was asked about
    QStringList m_current;                        ///< of the file that is asked about
    QJsonArray m_asked;
    bool m_cancelled = false;
};

} // namespace folvane::driver
