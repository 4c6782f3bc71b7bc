#include "platform/desktop/sessionBus.h"

#include <QFileInfo>
#include <QString>

namespace folvane {

namespace {

// Without either of these the bus library would run a program that looks for a bus or starts one, which takes long and
// leaves it behind.
bool isAnnounced()
{
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtime.isEmpty() && QFileInfo::exists(runtime + QStringLiteral("/bus"));
}

} // namespace

std::optional<QDBusConnection> sessionBus()
{
    if (!isAnnounced())
        return std::nullopt;
    QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.isConnected() ? std::optional(bus) : std::nullopt;
}

} // namespace folvane
