#pragma once

#include <QCoro/QCoroTask>

#include <QDBusConnection>
#include <QUrl>

namespace folvane {

/// Has the file manager show the folder of a local file with the file selected (org.freedesktop.FileManager1). False
/// when there is none or it does not answer.
QCoro::Task<bool> showInFileManager(QDBusConnection bus, QUrl file);

/// The same through the desktop's portal (org.freedesktop.portal.OpenURI). False when there is none, it refuses or it
/// does not answer.
QCoro::Task<bool> showThroughPortal(QDBusConnection bus, QUrl file);

} // namespace folvane
