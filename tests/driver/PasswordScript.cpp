#include "PasswordScript.h"

#include "Request.h"

#include <QHash>

#include <algorithm>

namespace folvane::driver {

PasswordScript::PasswordScript(const Request& request)
{
    QHash<QUrl, QStringList> byFile;
    const auto all = request.get<QJsonObject>("passwords", QJsonObject());
    for (auto entry = all.begin(); entry != all.end(); ++entry)
        if (!read(entry.value(), byFile[urlOf(entry.key())]))
            throw BadRequest(QStringLiteral("\"passwords\" must hold lists of answers"));
    for (const QUrl& url : request.list<QUrl>("files")) {
        m_fileNames.append(url.fileName());
        if (byFile.contains(url))
            m_waiting.append({url.fileName(), byFile[url]});
    }
}

bool PasswordScript::isAbout(const QString& fileName) const
{
    return m_fileNames.contains(fileName);
}

std::optional<QString> PasswordScript::answer(const QString& fileName, bool wasWrong)
{
    m_asked.append(QJsonObject{{"fileName", fileName}, {"wasWrong", wasWrong}});
    if (!wasWrong) {
        const auto found = std::ranges::find(m_waiting, fileName, &Answers::fileName);
        m_current = found == m_waiting.end() ? QStringList() : found->left;
        if (found != m_waiting.end())
            m_waiting.erase(found);
    }
    m_cancelled = m_cancelled || m_current.isEmpty();
    return m_current.isEmpty() ? std::nullopt : std::optional(m_current.takeFirst());
}

} // namespace folvane::driver
