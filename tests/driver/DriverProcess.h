#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QProcess>
#include <QString>

namespace folvane {

/// The driver as a person at a terminal has it: lines in, lines out. Throws when it does not answer.
class DriverProcess {
public:
    enum class User {
        Self,
        Nobody, ///< an unprivileged one; whoever runs the tests when that is no superuser
    };

    /// Keeps preferences and data in a folder of its own under `folder`, where it also works.
    explicit DriverProcess(const QString& folder, User user = User::Self);
    ~DriverProcess();

    QJsonObject ask(const QJsonObject& request);
    QJsonObject askLine(const QByteArray& line);
    void send(const QJsonObject& request);
    void sendLine(const QByteArray& line);
    QJsonObject receive();
    /// Ends the input; gives what is still answered to it.
    QList<QJsonObject> finish();

    qint64 processId() const { return m_process.processId(); }
    int exitCode() const { return m_process.exitCode(); }
    QProcess::ExitStatus exitStatus() const { return m_process.exitStatus(); }

private:
    QProcess m_process;
};

} // namespace folvane
