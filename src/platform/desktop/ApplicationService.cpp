#include "platform/desktop/ApplicationService.h"

#include "platform/desktop/ApplicationObject.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QVariantMap>

#include <algorithm>
#include <utility>

namespace folvane {

namespace {

constexpr QLatin1String applicationInterface("org.freedesktop.Application");

QVariantMap platformDataWith(const QString& token)
{
    return token.isEmpty() ? QVariantMap() : QVariantMap{{activationTokenKey, token}, {startupIdKey, token}};
}

QStringList textsOf(const QList<QUrl>& urls)
{
    QStringList texts;
    for (const QUrl& url : urls)
        texts.append(QString::fromLatin1(url.toEncoded()));
    return texts;
}

int left(const QDeadlineTimer& until)
{
    return int(std::max<qint64>(1, until.remainingTime()));
}

QDBusMessage callToBus(const QString& method)
{
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                          QStringLiteral("/org/freedesktop/DBus"),
                                          QStringLiteral("org.freedesktop.DBus"), method);
}

} // namespace

ApplicationService::ApplicationService(std::optional<QDBusConnection> bus, const QString& name,
                                       std::chrono::milliseconds patience)
    : m_bus(bus.value_or(QDBusConnection(QString()))),
      m_name(name),
      m_path(QLatin1Char('/') + name),
      m_patience(patience)
{
    m_path.replace(QLatin1Char('.'), QLatin1Char('/')).replace(QLatin1Char('-'), QLatin1Char('_'));
}

ApplicationService::~ApplicationService()
{
    retire();
}

void ApplicationService::retire()
{
    if (!m_object)
        return;
    if (std::exchange(m_ownsName, false))
        m_bus.send(callToBus(QStringLiteral("ReleaseName")) << m_name);
    m_bus.unregisterObject(m_path);
    m_object.reset();
}

// Whoever runs may end while we talk to it; then the name is free, and we ask again, but not for ever: it could also be
// a stranger with our name.
ApplicationService::Start ApplicationService::start(const QList<QUrl>& files, const QString& activationToken)
{
    if (!m_bus.isConnected())
        return Start::Alone;
    const QDeadlineTimer until(m_patience);
    publish();
    Reply reply = Reply::Lost;
    for (int attempt = 0; attempt < 3 && reply == Reply::Lost && !until.hasExpired(); ++attempt) {
        if (takeName(until)) {
            m_ownsName = true;
            return Start::First;
        }
        reply = handOver(files, activationToken, until);
    }
    retire();
    return reply == Reply::Taken ? Start::HandedOver : Start::Alone;
}

// The object stands before the name is asked for: who finds the name finds the object. Its calls wait in the queue of
// this thread until the event loop runs.
void ApplicationService::publish()
{
    m_object = std::make_unique<ApplicationObject>();
    connect(m_object.get(), &ApplicationObject::opened, this, &ApplicationService::opened);
    m_bus.registerObject(m_path, m_object.get(), QDBusConnection::ExportAllSlots);
}

// The bus alone decides who comes first, in one step: of any number of starts at the same moment one gets the name.
bool ApplicationService::takeName(const QDeadlineTimer& until)
{
    constexpr uint doNotQueue = 4;
    constexpr uint isOwner = 1;
    const QDBusMessage request = callToBus(QStringLiteral("RequestName")) << m_name << doNotQueue;
    const QDBusMessage reply = m_bus.call(request, QDBus::Block, left(until));
    return reply.type() == QDBusMessage::ReplyMessage && reply.arguments().value(0).toUInt() == isOwner;
}

ApplicationService::Reply ApplicationService::handOver(const QList<QUrl>& files,
                                                       const QString& activationToken,
                                                       const QDeadlineTimer& until)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(m_name, m_path, applicationInterface,
                                       files.isEmpty() ? QStringLiteral("Activate") : QStringLiteral("Open"));
    call.setAutoStartService(false); // the bus would start another one of us
    if (!files.isEmpty())
        call << textsOf(files);
    call << platformDataWith(activationToken);
    const QDBusMessage reply = m_bus.call(call, QDBus::Block, left(until));
    if (reply.type() == QDBusMessage::ReplyMessage)
        return Reply::Taken;
    const QDBusError::ErrorType error = QDBusError(reply).type();
    const bool ended = error == QDBusError::ServiceUnknown || error == QDBusError::NoReply
                       || error == QDBusError::UnknownObject;
    return ended ? Reply::Lost : Reply::Refused;
}

} // namespace folvane
