#include "scripts.h"

#include "Request.h"
#include "documents/fileNames.h"

#include <QJsonArray>

namespace folvane::driver {

namespace {

/// Null where the panel has no such thing.
QJsonObject told(const char* kind, const QJsonValue& name, const std::optional<QUrl>& near,
                 const QJsonValue& prompt, const QJsonValue& types)
{
    const QJsonValue folder = near ? QJsonValue(near->toLocalFile()) : QJsonValue();
    return {{"kind", kind}, {"name", name}, {"near", folder}, {"prompt", prompt}, {"types", types}};
}

} // namespace

QJsonObject told(const AskedPanel& asked)
{
    const QJsonValue none;
    if (const auto* save = std::get_if<SavePanel>(&asked))
        return told("save", save->name, save->folder, none, QJsonArray{"pdf"});
    if (const auto* folder = std::get_if<FolderPanel>(&asked))
        return told("folder", none, folder->folder, folder->prompt, none);
    const QUrl existing = std::get<ReplaceQuestion>(asked).existing; // no verb asks for files to open
    return told("replace", existing.fileName(), folderOf(existing), none, none);
}

ScriptedPanels panelsFor(const Request& request)
{
    ScriptedPanels panels;
    if (request.get<QString>("do") != QLatin1String("mergeMove")) // there it is the place that rows go to
        for (const QUrl& url : request.list<QUrl>("to"))
            panels.saveAnswers.enqueue(url);
    if (const auto folder = request.find<QUrl>("folder"))
        panels.folderAnswers.enqueue(*folder);
    if (const auto replace = request.find<bool>("replace"))
        panels.replaceAnswers.enqueue(*replace);
    panels.saveAnswers.enqueue(std::nullopt);
    panels.folderAnswers.enqueue(std::nullopt);
    return panels;
}

PasswordScript::PasswordScript(const Request& request)
{
    const auto answers = request.get<QHash<QUrl, QStringList>>("passwords", QHash<QUrl, QStringList>());
    for (const QUrl& url : request.list<QUrl>("files")) {
        QList<QStringList>& waiting = m_waiting[url.fileName()];
        if (answers.contains(url))
            waiting.append(answers[url]);
    }
}

std::optional<QString> PasswordScript::answer(const QString& fileName, bool wasWrong)
{
    if (!wasWrong) {
        QList<QStringList>& waiting = m_waiting[fileName];
        m_current = waiting.isEmpty() ? QStringList() : waiting.takeFirst();
    }
    m_cancelled = m_cancelled || m_current.isEmpty();
    return m_current.isEmpty() ? std::nullopt : std::optional(m_current.takeFirst());
}

} // namespace folvane::driver
