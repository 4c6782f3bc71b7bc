#include "PasswordScript.h"

#include "Request.h"

#include <QUrl>

namespace folvane::driver {

PasswordScript::PasswordScript(const Request& request)
{
    QHash<QUrl, QStringList> byFile;
    const auto all = request.get<QJsonObject>("passwords", QJsonObject());
    for (auto entry = all.begin(); entry != all.end(); ++entry)
        if (!read(entry.value(), byFile[urlOf(entry.key())]))
            throw BadRequest(QStringLiteral("\"passwords\" must hold lists of answers"));
    for (const QUrl& url : request.list<QUrl>("files")) {
        QList<QStringList>& waiting = m_waiting[url.fileName()];
        if (byFile.contains(url))
            waiting.append(byFile[url]);
    }
}

bool PasswordScript::isAbout(const QString& fileName) const
{
    return m_waiting.contains(fileName);
}

std::optional<QString> PasswordScript::answer(const QString& fileName, bool wasWrong)
{
    m_asked.append(QJsonObject{{"fileName", fileName}, {"wasWrong", wasWrong}});
    if (!wasWrong) {
        QList<QStringList>& waiting = m_waiting[fileName];
        m_current = waiting.isEmpty() ? QStringList() : waiting.takeFirst();
    }
    m_cancelled = m_cancelled || m_current.isEmpty();
    return m_current.isEmpty() ? std::nullopt : std::optional(m_current.takeFirst());
}

} // namespace folvane::driver
