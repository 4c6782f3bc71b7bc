#include "PasswordScript.h"

#include "Request.h"

#include <algorithm>

namespace folvane::driver {

PasswordScript::PasswordScript(const Request& request) : m_files(request.urls("files"))
{
    const auto byFile = request.passwords();
    for (const QUrl& url : m_files)
        for (const auto& [locked, answers] : byFile)
            if (locked == url)
                m_entries.append({url, answers});
}

bool PasswordScript::isAbout(const QString& fileName) const
{
    return std::any_of(m_files.begin(), m_files.end(),
                       [&](const QUrl& url) { return url.fileName() == fileName; });
}

PasswordScript::Entry* PasswordScript::begin(const QString& fileName)
{
    for (Entry& entry : m_entries) {
        if (!entry.begun && entry.url.fileName() == fileName) {
            entry.begun = true;
            return &entry;
        }
    }
    return nullptr;
}

std::optional<QString> PasswordScript::answer(const QString& fileName, bool wasWrong)
{
    m_asked.append(
        QJsonObject{{QStringLiteral("fileName"), fileName}, {QStringLiteral("wasWrong"), wasWrong}});
    if (!wasWrong)
        m_current = begin(fileName);
    if (m_current && !m_current->answers.isEmpty())
        return m_current->answers.takeFirst();
    m_cancelled = true;
    return std::nullopt;
}

} // namespace folvane::driver
