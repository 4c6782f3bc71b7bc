#pragma once

#include <QDBusConnection>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

#include <chrono>
#include <memory>
#include <optional>

class QDeadlineTimer;

namespace folvane {

class ApplicationObject;

/// The one running program of a session, as the desktop sees it: the owner of a well-known name on the session bus, with
/// the object by which desktop entries with D-Bus activation reach it (org.freedesktop.Application).
class ApplicationService : public QObject {
    Q_OBJECT

public:
    enum class Start {
        First,      ///< the name is ours; what others ask arrives as signals, once the event loop runs
        HandedOver, ///< another one runs and has taken the files
        Alone       ///< no bus, or nobody on it answers: others cannot reach this program
    };

    /// `name` is the well-known name, from which the path of the object follows. A running program that does not answer
    /// within `patience` is left to itself.
    ApplicationService(std::optional<QDBusConnection> bus, const QString& name,
                       std::chrono::milliseconds patience = std::chrono::seconds(5));
    ~ApplicationService() override;

    /// Becomes the running program, or hands the files to the one that is, with the token that the desktop gave to this
    /// start (an xdg-activation token or a start-up id, may be empty). Blocks until that is settled. Call it once.
    Start start(const QList<QUrl>& files, const QString& activationToken);
    /// Gives the name up: from here on the next start is a first one. The destructor does it too.
    void retire();

signals:
    /// The program is to come to the front and open the files; with no files only the former.
    void opened(const QList<QUrl>& files, const QString& activationToken);

private:
    enum class Reply { Taken, Lost, Refused };

    void publish();
    bool takeName(const QDeadlineTimer& until);
    Reply handOver(const QList<QUrl>& files, const QString& activationToken, const QDeadlineTimer& until);

    QDBusConnection m_bus; ///< not connected when there is none
    QString m_name;
    QString m_path;
    std::chrono::milliseconds m_patience;
    std::unique_ptr<ApplicationObject> m_object; ///< what callers on the bus reach
    bool m_ownsName = false;
};

} // namespace folvane
