#pragma once

#include <QString>
#include <QtGui/qwindowdefs.h>

#include <optional>

namespace folvane {

/// The time on the X server's clock, in milliseconds, of the click that a start-up id stands for: what follows its last
/// "_TIME". None when it has no such part. (Startup Notification Protocol, "Startup ID")
std::optional<quint32> timeOfStartup(const QString& startupId);

/// Asks the window manager to focus the window on behalf of that start-up, if the id has a time, and tells the desktop
/// that the start is over, so that its busy pointer ends. Nothing for an empty id, and where there is no X server.
void activateOnX11(WId window, const QString& startupId);

} // namespace folvane
