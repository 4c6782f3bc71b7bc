#include "platform/desktop/DesktopNotification.h"

#include "platform/tasks/spawn.h"

#include <QCoro/QCoroDBusPendingCall>

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QVariantMap>

#include <utility>

namespace folvane {

namespace {

constexpr QLatin1String service("org.freedesktop.Notifications");
constexpr QLatin1String path("/org/freedesktop/Notifications");

QDBusMessage callTo(const QString& method)
{
    return QDBusMessage::createMethodCall(service, path, service, method);
}

void close(const QDBusConnection& bus, uint id)
{
    bus.send(callTo(QStringLiteral("CloseNotification")) << id);
}

} // namespace

// No sender is asked for: to learn who it is would mean to wait for the bus.
DesktopNotification::DesktopNotification(QDBusConnection bus, QString desktopEntry)
    : m_bus(std::move(bus)), m_desktopEntry(std::move(desktopEntry))
{
    const QString anybody;
    m_bus.connect(anybody, path, service, QStringLiteral("ActivationToken"), this,
                  SLOT(takeToken(uint, QString)));
    m_bus.connect(anybody, path, service, QStringLiteral("ActionInvoked"), this, SLOT(takeAction(uint)));
    m_bus.connect(anybody, path, service, QStringLiteral("NotificationClosed"), this, SLOT(forget(uint)));
}

DesktopNotification::~DesktopNotification()
{
    withdraw();
}

void DesktopNotification::show(const Content& content)
{
    withdraw();
    m_posting = std::stop_source();
    spawn(post(content, m_posting.get_token()));
}

void DesktopNotification::withdraw()
{
    m_posting.request_stop();
    if (m_id != 0)
        close(m_bus, std::exchange(m_id, 0));
}

// Some servers take markup in the text, and the others would show its escapes.
QCoro::Task<> DesktopNotification::post(Content content, std::stop_token overtaken)
{
    const QDBusConnection bus = m_bus;
    const QDBusPendingCall asking = bus.asyncCall(callTo(QStringLiteral("GetCapabilities")));
    const QDBusMessage capabilities = co_await asking;
    if (overtaken.stop_requested() || capabilities.type() != QDBusMessage::ReplyMessage)
        co_return;
    const bool takesMarkup =
        capabilities.arguments().value(0).toStringList().contains(QStringLiteral("body-markup"));
    constexpr uint replacesNone = 0;
    constexpr int neverExpires = 0;
    const QDBusMessage notify =
        callTo(QStringLiteral("Notify"))
        << QCoreApplication::applicationName() << replacesNone << m_desktopEntry << content.title
        << (takesMarkup ? content.text.toHtmlEscaped() : content.text)
        << QStringList{QStringLiteral("default"), content.button, QStringLiteral("show"), content.button}
        << QVariantMap{{QStringLiteral("desktop-entry"), m_desktopEntry}} << neverExpires;
    const QDBusPendingCall posting = bus.asyncCall(notify);
    const QDBusMessage reply = co_await posting;
    const uint id = reply.arguments().value(0).toUInt(); // 0 of an error
    if (!overtaken.stop_requested())
        m_id = id;
    else if (id != 0)
        close(bus, id);
}

void DesktopNotification::takeToken(uint id, const QString& token)
{
    if (id == m_id)
        m_token = token;
}

void DesktopNotification::takeAction(uint id)
{
    if (id != 0 && id == m_id)
        emit activated(std::exchange(m_token, {}));
}

void DesktopNotification::forget(uint id)
{
    if (id == m_id)
        m_id = 0;
}

} // namespace folvane
