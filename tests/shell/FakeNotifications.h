#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace folvane {

/// A desktop that shows notifications: keeps the text of the one that is up.
class FakeNotifications : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QString shown;
    QStringList capabilities;
    uint id = 40;

    void click()
    {
        emit ActivationToken(id, "token");
        emit ActionInvoked(id, "default");
    }

public slots:
    QStringList GetCapabilities() { return capabilities; }
    uint Notify(const QString&, uint, const QString&, const QString&, const QString& body, const QStringList&,
                const QVariantMap&, int)
    {
        shown = body;
        return ++id;
    }
    void CloseNotification(uint closed)
    {
        if (closed == id)
            shown.clear();
    }

signals:
    void ActivationToken(uint id, const QString& token);
    void ActionInvoked(uint id, const QString& action);
};

} // namespace folvane
