#include "shell/ClosedWindowNotice.h"

#include "config.h"
#include "documents/AppModel.h"
#include "platform/desktop/x11Activation.h"
#include "shell/RootView.h"

#include <QEvent>

namespace folvane {

ClosedWindowNotice::ClosedWindowNotice(const AppModel& model, RootView& window, const QDBusConnection& bus)
    : m_model(model), m_notification(bus, config::bundleIdentifier.toString())
{
    window.installEventFilter(this);
    connect(&m_notification, &DesktopNotification::activated, &window,
            [&window](const QString& activationToken) {
                const QWidget& front = window.bringToFront(activationToken);
                activateOnX11(front.winId(), activationToken);
            });
}

bool ClosedWindowNotice::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Hide && !event->spontaneous())
        tell();
    else if (event->type() == QEvent::Show)
        m_notification.withdraw();
    return QObject::eventFilter(watched, event);
}

void ClosedWindowNotice::tell()
{
    if (const std::optional<QuitQuestion> unsaved = m_model.quitQuestion())
        m_notification.show({tr("Folvane is still running"), unsaved->text, tr("Show Window")});
}

} // namespace folvane
