#pragma once

#include "platform/desktop/DesktopNotification.h"

#include <QObject>

namespace folvane {

class AppModel;
class RootView;

/// Tells on the desktop which changes keep the program running while its window is hidden, and brings the window back
/// from there.
class ClosedWindowNotice : public QObject {
    Q_OBJECT

public:
    ClosedWindowNotice(const AppModel& model, RootView& window, const QDBusConnection& bus);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void tell();

    const AppModel& m_model;
    DesktopNotification m_notification;
};

} // namespace folvane
