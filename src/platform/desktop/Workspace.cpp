#include "platform/desktop/Workspace.h"

#include "platform/desktop/fileManager.h"

#include <QDesktopServices>

#include <utility>

namespace folvane {

Workspace::~Workspace() = default;

DesktopWorkspace::DesktopWorkspace(std::optional<QDBusConnection> bus) : m_bus(std::move(bus)) {}

bool DesktopWorkspace::openLink(QUrl link)
{
    return QDesktopServices::openUrl(link);
}

// The file manager comes first because early portals open the folder without selecting the file.
QCoro::Task<> DesktopWorkspace::reveal(QUrl file)
{
    if (const std::optional<QDBusConnection> bus = m_bus) {
        const bool shown = co_await showInFileManager(*bus, file);
        if (shown)
            co_return;
        const bool shownByPortal = co_await showThroughPortal(*bus, file);
        if (shownByPortal)
            co_return;
    }
    QDesktopServices::openUrl(file.adjusted(QUrl::RemoveFilename | QUrl::StripTrailingSlash));
}

} // namespace folvane
