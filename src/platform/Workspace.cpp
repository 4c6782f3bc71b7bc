#include "platform/Workspace.h"

#include <QDesktopServices>

namespace folvane {

Workspace::~Workspace() = default;

bool DesktopWorkspace::openLink(QUrl link)
{
    return QDesktopServices::openUrl(link);
}

QCoro::Task<> DesktopWorkspace::reveal(QUrl file)
{
    QDesktopServices::openUrl(file.adjusted(QUrl::RemoveFilename | QUrl::StripTrailingSlash));
    co_return;
}

bool ScriptedWorkspace::openLink(QUrl link)
{
    openedLinks.append(link);
    return opensLinks;
}

QCoro::Task<> ScriptedWorkspace::reveal(QUrl file)
{
    revealed.append(file);
    co_return;
}

} // namespace folvane
