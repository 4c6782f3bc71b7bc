#include "PanelScript.h"

#include "Request.h"

#include <QJsonObject>

#include <utility>

namespace folvane::driver {

namespace {

QJsonValue path(const std::optional<QUrl>& url)
{
    return url ? QJsonValue(url->toLocalFile()) : QJsonValue();
}

QJsonArray names(const QList<ContentType>& types)
{
    QJsonArray all;
    for (const ContentType type : types)
        all.append(type == ContentType::Pdf ? "pdf" : "image");
    return all;
}

/// Null where the panel has no such thing.
QJsonObject told(const char* kind, const QJsonValue& name, const QJsonValue& near, const QJsonValue& prompt,
                 const QJsonValue& types)
{
    return {{"kind", kind}, {"name", name}, {"near", near}, {"prompt", prompt}, {"types", types}};
}

struct Telling {
    QJsonObject operator()(const SavePanel& panel) const
    {
        return told("save", panel.name, path(panel.folder), {}, names({ContentType::Pdf}));
    }
    QJsonObject operator()(const FolderPanel& panel) const
    {
        return told("folder", {}, path(panel.folder), panel.prompt, {});
    }
    QJsonObject operator()(const OpenPanel& panel) const
    {
        return told("open", {}, {}, panel.message, names(panel.types));
    }
    QJsonObject operator()(const ReplaceQuestion& question) const
    {
        const QUrl folder = question.existing.adjusted(QUrl::RemoveFilename | QUrl::StripTrailingSlash);
        return told("replace", question.existing.fileName(), path(folder), {}, {});
    }
};

} // namespace

ScriptedPanels panelsFor(const Request& request)
{
    ScriptedPanels panels;
    if (request.get<QString>("do") != QLatin1String("mergeMove")) // there it is the place that rows go to
        for (const QUrl& url : request.list<QUrl>("to"))
            panels.saveAnswers.enqueue(url);
    if (const auto folder = request.find<QUrl>("folder"))
        panels.folderAnswers.enqueue(*folder);
    if (request.has("files"))
        panels.openAnswers.enqueue(request.list<QUrl>("files"));
    if (const auto replace = request.find<bool>("replace"))
        panels.replaceAnswers.enqueue(*replace);
    panels.saveAnswers.enqueue(std::nullopt);
    panels.folderAnswers.enqueue(std::nullopt);
    return panels;
}

QJsonArray takeAsked(ScriptedPanels& panels)
{
    QJsonArray asked;
    for (const AskedPanel& panel : std::exchange(panels.asked, {}))
        asked.append(std::visit(Telling(), panel));
    return asked;
}

bool wasCancelled(const ScriptedPanels& panels)
{
    return panels.saveAnswers.isEmpty() || panels.folderAnswers.isEmpty();
}

} // namespace folvane::driver
