#include "PanelScript.h"

#include "Request.h"

#include <QJsonObject>

#include <algorithm>
#include <utility>

namespace folvane::driver {

namespace {

QJsonValue path(const std::optional<QUrl>& url)
{
    return url ? QJsonValue(url->toLocalFile()) : QJsonValue(QJsonValue::Null);
}

QJsonObject entry(const char* kind, const QJsonValue& name, const QJsonValue& near, const QJsonValue& prompt,
                  const QJsonValue& types)
{
    return {{QStringLiteral("kind"), QLatin1String(kind)},
            {QStringLiteral("name"), name},
            {QStringLiteral("near"), near},
            {QStringLiteral("prompt"), prompt},
            {QStringLiteral("types"), types}};
}

QJsonArray names(const QList<ContentType>& types)
{
    QJsonArray all;
    for (const ContentType type : types)
        all.append(type == ContentType::Pdf ? QStringLiteral("pdf") : QStringLiteral("image"));
    return all;
}

const QJsonValue none = QJsonValue::Null;

template <typename Panel> qsizetype count(const QList<AskedPanel>& asked)
{
    return std::count_if(asked.begin(), asked.end(),
                         [](const AskedPanel& panel) { return std::holds_alternative<Panel>(panel); });
}

struct Description {
    QJsonObject operator()(const SavePanel& panel) const
    {
        return entry("save", panel.name, path(panel.folder), none, names({ContentType::Pdf}));
    }
    QJsonObject operator()(const FolderPanel& panel) const
    {
        return entry("folder", none, path(panel.folder), panel.prompt, none);
    }
    QJsonObject operator()(const OpenPanel& panel) const
    {
        return entry("open", none, none, panel.message, names(panel.types));
    }
    QJsonObject operator()(const ReplaceQuestion& question) const
    {
        const QUrl folder = question.existing.adjusted(QUrl::RemoveFilename | QUrl::StripTrailingSlash);
        return entry("replace", question.existing.fileName(), path(folder), none, none);
    }
};

} // namespace

void PanelScript::load(const Request& request)
{
    m_panels = ScriptedPanels();
    if (request.verb() != QLatin1String("mergeMove")) // there it is the place that rows go to
        for (const QUrl& url : request.urls("to"))
            m_panels.saveAnswers.enqueue(url);
    m_savesAnswered = m_panels.saveAnswers.size();
    if (const auto folder = request.optionalUrl("folder"))
        m_panels.folderAnswers.enqueue(*folder);
    m_foldersAnswered = m_panels.folderAnswers.size();
    if (request.has("files"))
        m_panels.openAnswers.enqueue(request.urls("files"));
    if (request.has("replace"))
        m_panels.replaceAnswers.enqueue(request.flag("replace", false));
}

QJsonArray PanelScript::takeAsked()
{
    QJsonArray asked;
    for (const AskedPanel& panel : std::exchange(m_panels.asked, {}))
        asked.append(std::visit(Description(), panel));
    return asked;
}

bool PanelScript::wasCancelled() const
{
    return count<SavePanel>(m_panels.asked) > m_savesAnswered
           || count<FolderPanel>(m_panels.asked) > m_foldersAnswered;
}

} // namespace folvane::driver
