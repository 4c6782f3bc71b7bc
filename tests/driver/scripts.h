#pragma once

#include "support/ScriptedPanels.h"

#include <QHash>
#include <QJsonArray>
#include <QStringList>

// What a request answers when it is asked for something, and what it was asked.

namespace folvane::driver {

class Request;

/// Panels that answer from the request: what is in `to`, `folder` and `replace`, then Cancel.
ScriptedPanels panelsFor(const Request& request);
/// What was asked since it was last taken.
QJsonArray takeAsked(ScriptedPanels& panels);
/// More panels that ask for a place came up than the request has answers for: the last one ended with Cancel.
bool wasCancelled(const ScriptedPanels& panels);

/// A question for a password names a file without its folder: files of one name are told apart by their order.
class PasswordScript {
public:
    explicit PasswordScript(const Request& request);

    /// Whether the question can be about one of the request's files.
    bool isAbout(const QString& fileName) const { return m_waiting.contains(fileName); }
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
