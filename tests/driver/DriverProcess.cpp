#include "DriverProcess.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QProcessEnvironment>

#include <stdexcept>

#include <grp.h>
#include <unistd.h>

namespace folvane {

namespace {

constexpr int patience = 120'000; // milliseconds, for sanitized builds on a busy machine
constexpr unsigned nobody = 65534;

QProcessEnvironment separateFrom(const QString& folder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* variable :
         {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
        environment.insert(QLatin1String(variable), folder);
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    return environment;
}

void openToAll(const QString& path)
{
    using Permission = QFileDevice::Permission;
    const auto more =
        Permission::ReadOther | Permission::ExeOther | Permission::ReadGroup | Permission::ExeGroup;
    if (!QFile::setPermissions(path, QFile::permissions(path) | more))
        throw std::runtime_error("permissions cannot be set");
}

void giveToNobody(const QString& path)
{
    if (::chown(QFile::encodeName(path).constData(), nobody, nobody) != 0)
        throw std::runtime_error("a folder cannot be given away");
}

// Another user may not be able to reach the build folder.
QString copyOfDriver(const QString& folder)
{
    const QString copy = folder + QStringLiteral("/driver-of-nobody");
    if (!QFile::exists(copy) && !QFile::copy(QStringLiteral(FOLVANE_DRIVER), copy))
        throw std::runtime_error("the driver cannot be copied");
    openToAll(copy);
    return copy;
}

void becomeNobody()
{
    if (::setgroups(0, nullptr) != 0 || ::setgid(nobody) != 0 || ::setuid(nobody) != 0)
        ::_exit(99);
}

} // namespace

DriverProcess::DriverProcess(const QString& folder, User user)
{
    const QString home = folder + QStringLiteral("/home");
    QDir().mkpath(home);
    QFile::setPermissions(home, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    m_process.setProcessEnvironment(separateFrom(home));
    m_process.setWorkingDirectory(folder);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.setProgram(QStringLiteral(FOLVANE_DRIVER));
    if (user == User::Nobody && ::geteuid() == 0) {
        openToAll(folder);
        giveToNobody(home);
        m_process.setProgram(copyOfDriver(folder));
        m_process.setChildProcessModifier(becomeNobody);
    }
    m_process.start();
    if (!m_process.waitForStarted(patience))
        throw std::runtime_error("the driver does not start");
}

DriverProcess::~DriverProcess()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(patience))
        m_process.kill();
}

void DriverProcess::sendLine(const QByteArray& line)
{
    m_process.write(line + '\n');
}

void DriverProcess::send(const QJsonObject& request)
{
    sendLine(QJsonDocument(request).toJson(QJsonDocument::Compact));
}

QJsonObject DriverProcess::receive()
{
    while (!m_process.canReadLine())
        if (!m_process.waitForReadyRead(patience))
            throw std::runtime_error("the driver does not answer");
    const QJsonDocument answer = QJsonDocument::fromJson(m_process.readLine());
    if (!answer.isObject())
        throw std::runtime_error("the answer is no JSON object");
    return answer.object();
}

QJsonObject DriverProcess::ask(const QJsonObject& request)
{
    send(request);
    return receive();
}

QJsonObject DriverProcess::askLine(const QByteArray& line)
{
    sendLine(line);
    return receive();
}

QList<QJsonObject> DriverProcess::finish()
{
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(patience))
        throw std::runtime_error("the driver does not end");
    QList<QJsonObject> answers;
    while (m_process.canReadLine())
        answers.append(QJsonDocument::fromJson(m_process.readLine()).object());
    return answers;
}

} // namespace folvane
