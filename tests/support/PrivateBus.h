#pragma once

#include "support/TestFolder.h"

#include <QDBusConnection>
#include <QProcess>
#include <QUuid>

#include <stdexcept>

namespace folvane {

/// A message bus on which nobody is but the test: it starts no services, and dies with this object.
class PrivateBus {
public:
    PrivateBus()
    {
        const QUrl settings = m_folder.put(
            "bus.conf",
            "<busconfig><type>session</type><listen>unix:dir=" + m_folder.path({}).toUtf8()
                + "</listen><policy context=\"default\"><allow send_destination=\"*\"/>"
                  "<allow eavesdrop=\"true\"/><allow own=\"*\"/><allow user=\"*\"/></policy></busconfig>");
        m_daemon.setStandardErrorFile(QProcess::nullDevice());
        m_daemon.start("dbus-daemon",
                       {"--config-file=" + settings.toLocalFile(), "--nofork", "--print-address"});
        while (!m_daemon.canReadLine())
            if (!m_daemon.waitForReadyRead(30'000))
                throw std::runtime_error("dbus-daemon does not start");
        m_address = QString::fromUtf8(m_daemon.readLine().trimmed());
    }

    ~PrivateBus()
    {
        for (const QString& name : m_connections)
            QDBusConnection::disconnectFromBus(name);
        stop();
    }
    Q_DISABLE_COPY_MOVE(PrivateBus)

    /// As a program of its own would have it.
    QDBusConnection connection()
    {
        const QString name = QUuid::createUuid().toString();
        m_connections.append(name);
        const QDBusConnection bus = QDBusConnection::connectToBus(m_address, name);
        if (!bus.isConnected())
            throw std::runtime_error("the bus takes no connection");
        return bus;
    }

    QString address() const { return m_address; }

    void stop()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

private:
    TestFolder m_folder;
    QProcess m_daemon;
    QString m_address;
    QStringList m_connections;
};

} // namespace folvane
