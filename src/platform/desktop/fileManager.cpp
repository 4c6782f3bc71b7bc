#include "platform/desktop/fileManager.h"

#include <QCoro/QCoroDBusPendingCall>

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusUnixFileDescriptor>
#include <QFile>
#include <QScopeGuard>
#include <QVariantMap>

#include <chrono>

#include <fcntl.h>
#include <unistd.h>

namespace folvane {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds patience = 10s; // the call may have to start a file manager first

QCoro::Task<bool> succeeds(QDBusConnection bus, QDBusMessage call)
{
    const QDBusPendingCall pending = bus.asyncCall(call, int(patience.count()));
    const QDBusMessage reply = co_await pending;
    co_return reply.type() == QDBusMessage::ReplyMessage;
}

/// Only names the file, and so needs no right to read it. Invalid when it is not there.
QDBusUnixFileDescriptor descriptorOf(const QUrl& file)
{
    const int descriptor = ::open(QFile::encodeName(file.toLocalFile()).constData(), O_PATH | O_CLOEXEC);
    if (descriptor < 0)
        return {};
    const auto closing = qScopeGuard([descriptor] { ::close(descriptor); });
    return QDBusUnixFileDescriptor(descriptor);
}

} // namespace

QCoro::Task<bool> showInFileManager(QDBusConnection bus, QUrl file)
{
    const QString noStartupId;
    const QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.FileManager1"),
                                                             QStringLiteral("/org/freedesktop/FileManager1"),
                                                             QStringLiteral("org.freedesktop.FileManager1"),
                                                             QStringLiteral("ShowItems"))
                              << QStringList{QString::fromLatin1(file.toEncoded())} << noStartupId;
    return succeeds(bus, call);
}

QCoro::Task<bool> showThroughPortal(QDBusConnection bus, QUrl file)
{
    const QDBusUnixFileDescriptor descriptor = descriptorOf(file);
    if (!descriptor.isValid())
        co_return false;
    const QString noParentWindow;
    const QDBusMessage call =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"),
                                       QStringLiteral("/org/freedesktop/portal/desktop"),
                                       QStringLiteral("org.freedesktop.portal.OpenURI"),
                                       QStringLiteral("OpenDirectory"))
        << noParentWindow << QVariant::fromValue(descriptor) << QVariantMap();
    const bool accepted = co_await succeeds(bus, call);
    co_return accepted;
}

} // namespace folvane
