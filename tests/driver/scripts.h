#pragma once

#include "support/ScriptedPanels.h"

#include <QHash>
#include <QJsonObject>
#include <QStringList>

// What a request answers when it is asked for something.

namespace folvane::driver {

class Request;

/// Panels that answer from the request: what is in `to`, `folder` and `replace`, then Cancel.
ScriptedPanels panelsFor(const Request& request);
/// What a panel asked.
QJsonObject told(const AskedPanel& asked);

/// A question for a password names a file without its folder: files of one name are told apart by their order.
class PasswordScript {
public:
    explicit PasswordScript(const Request& request);

    /// Whether the question can be about one of the request's files.
    bool isAbout(const QString& fileName) const { return m_waiting.contains(fileName); }
    /// The next answer; Cancel when there is none left.
    std::optional<QString> answer(const QString& fileName, bool wasWrong);
    bool wasCancelled() const { return m_cancelled; }

private:
    QHash<QString, QList<QStringList>> m_waiting; ///< by file name; of files that nothing was asked about
    QStringList m_current;                        ///< of the file that is asked about
    bool m_cancelled = false;
};

} // namespace folvane::driver
