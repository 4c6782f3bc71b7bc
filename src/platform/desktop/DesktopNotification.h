#pragma once

#include <QCoro/QCoroTask>

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <stop_token>

namespace folvane {

/// One notification of the desktop (org.freedesktop.Notifications), which stays until it is answered or withdrawn. It never
/// blocks, and where nobody shows notifications nothing happens.
class DesktopNotification : public QObject {
    Q_OBJECT

public:
    struct Content {
        QString title;
        QString text;   ///< plain
        QString button; ///< does the same as a click on the notification
    };

    /// `desktopEntry` is the name under which the desktop knows the program and its icon.
    DesktopNotification(QDBusConnection bus, QString desktopEntry);
    ~DesktopNotification() override;

    /// Takes the place of what is shown.
    void show(const Content& content);
    void withdraw();

signals:
    /// The person has clicked it or its button. The token is for the window that comes up then; it may be empty.
    void activated(const QString& activationToken);

private slots:
    void takeToken(uint id, const QString& token);
    void takeAction(uint id);
    void forget(uint id);

private:
    QCoro::Task<> post(Content content, std::stop_token overtaken);

    QDBusConnection m_bus;
    QString m_desktopEntry;
    QString m_token;
    uint m_id = 0; ///< none
    std::stop_source m_posting;
};

} // namespace folvane
