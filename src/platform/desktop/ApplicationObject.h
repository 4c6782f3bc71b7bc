#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVariantList>
#include <QVariantMap>

namespace folvane {

/// Keys of the platform data in which a token comes; see ApplicationService::start(). Senders fill both.
inline constexpr QLatin1String activationTokenKey("activation-token");
inline constexpr QLatin1String startupIdKey("desktop-startup-id");

/// What callers on the bus reach: its slots are the methods of the interface, under their names there.
class ApplicationObject : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public slots:
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    /// We announce no actions; a desktop that remembers one from another version gets at least the window.
    void ActivateAction(const QString& action, const QVariantList& parameters,
                        const QVariantMap& platformData);

signals:
    void opened(const QList<QUrl>& files, const QString& activationToken);
};

} // namespace folvane
