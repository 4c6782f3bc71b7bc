#include "platform/desktop/ApplicationService.h"
#include "platform/desktop/sessionBus.h"
#include "platform/desktop/x11Activation.h"
#include "support/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QEventLoop>
#include <QSemaphore>
#include <QSignalSpy>
#include <QStringList>
#include <QThread>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace folvane {
namespace {

using namespace std::chrono_literals;
using Start = ApplicationService::Start;

const QString name = QStringLiteral("example.test-maker.program");
const QString path = QStringLiteral("/example/test_maker/program");

class Service : public testing::Test {
protected:
    /// What a second process does, on a thread of its own because it blocks.
    Start startElsewhere(const QList<QUrl>& files, const QString& token)
    {
        Start start = Start::Alone;
        const std::unique_ptr<QThread> other(QThread::create([&] {
            ApplicationService second(bus.connection(), name);
            start = second.start(files, token);
        }));
        QEventLoop loop;
        QObject::connect(other.get(), &QThread::finished, &loop, &QEventLoop::quit);
        other->start();
        loop.exec();
        other->wait();
        return start;
    }

    /// The answer to a call that the desktop makes; the event loop runs meanwhile.
    QDBusMessage call(const QString& method, const QVariantList& arguments)
    {
        QDBusMessage message =
            QDBusMessage::createMethodCall(name, path, QStringLiteral("org.freedesktop.Application"), method);
        message.setArguments(arguments);
        QDBusPendingCallWatcher watcher(bus.connection().asyncCall(message));
        QEventLoop loop;
        QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
        if (!watcher.isFinished())
            loop.exec();
        return watcher.reply();
    }

    PrivateBus bus;
};

TEST_F(Service, SecondStartHandsItsFilesOver)
{
    ApplicationService first(bus.connection(), name);
    ASSERT_EQ(first.start({}, {}), Start::First);
    QSignalSpy opened(&first, &ApplicationService::opened);
    const QList<QUrl> files{QUrl::fromLocalFile(QStringLiteral("/tmp/a b/50%25 ä #1?.pdf")),
                            QUrl::fromLocalFile(QStringLiteral("/tmp/+&;'\".png"))};

    EXPECT_EQ(startElsewhere(files, QStringLiteral("token_TIME7")), Start::HandedOver);

    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened[0][0].value<QList<QUrl>>(), files);
    EXPECT_EQ(opened[0][1].toString(), QStringLiteral("token_TIME7"));
}

TEST_F(Service, SecondStartWithoutFilesOnlyActivates)
{
    ApplicationService first(bus.connection(), name);
    ASSERT_EQ(first.start({}, {}), Start::First);
    QSignalSpy opened(&first, &ApplicationService::opened);
    EXPECT_EQ(startElsewhere({}, {}), Start::HandedOver);
    ASSERT_EQ(opened.size(), 1);
    EXPECT_TRUE(opened[0][0].value<QList<QUrl>>().isEmpty());
}

TEST_F(Service, NameIsFreeAgainAfterTheEnd)
{
    auto first = std::make_unique<ApplicationService>(bus.connection(), name);
    ASSERT_EQ(first->start({}, {}), Start::First);
    first.reset();
    ApplicationService next(bus.connection(), name);
    EXPECT_EQ(next.start({}, {}), Start::First);
}

TEST_F(Service, OneOfManyStartsAtTheSameMomentComesFirst)
{
    constexpr int starts = 8;
    std::vector<Start> results(starts, Start::Alone);
    std::vector<std::unique_ptr<QThread>> threads;
    QSemaphore refused;
    for (Start& result : results) {
        threads.emplace_back(QThread::create([&result, &refused, connection = bus.connection()] {
            ApplicationService service(connection, name);
            result = service.start({QUrl(QStringLiteral("file:///a.pdf"))}, {});
            if (result == Start::First)
                QEventLoop().exec(); // the others are waiting for its answer
            else
                refused.release();
        }));
    }
    for (const auto& thread : threads)
        thread->start();
    EXPECT_TRUE(refused.tryAcquire(starts - 1, 60'000));
    for (const auto& thread : threads) {
        thread->quit();
        thread->wait();
    }
    EXPECT_EQ(std::ranges::count(results, Start::First), 1);
    EXPECT_EQ(std::ranges::count(results, Start::HandedOver), starts - 1);
}

// Nobody runs the event loop of the first one here.
TEST_F(Service, SilentProgramIsLeftToItself)
{
    ApplicationService silent(bus.connection(), name);
    ASSERT_EQ(silent.start({}, {}), Start::First);
    ApplicationService second(bus.connection(), name, 200ms);
    EXPECT_EQ(second.start({QUrl(QStringLiteral("file:///a.pdf"))}, {}), Start::Alone);
}

TEST_F(Service, StrangerWithOurNameIsLeftToItself)
{
    QDBusConnection stranger = bus.connection();
    ASSERT_TRUE(stranger.registerService(name));
    ApplicationService second(bus.connection(), name);
    EXPECT_EQ(second.start({}, {}), Start::Alone);
}

TEST_F(Service, RunsAloneWithoutABusThatWorks)
{
    ApplicationService withoutBus(std::nullopt, name);
    EXPECT_EQ(withoutBus.start({}, {}), Start::Alone);

    const QDBusConnection broken = bus.connection();
    bus.stop();
    ApplicationService onBrokenBus(broken, name);
    EXPECT_EQ(onBrokenBus.start({}, {}), Start::Alone);
}

struct PlatformDataCase {
    const char* name;
    QVariantMap data;
    const char* token;
};

TEST_F(Service, TakesTheTokenOfEitherGeneration)
{
    const PlatformDataCase rows[]{
        {"none", {}, ""},
        {"Wayland", {{QStringLiteral("activation-token"), QStringLiteral("w")}}, "w"},
        {"X11", {{QStringLiteral("desktop-startup-id"), QStringLiteral("x")}}, "x"},
        {"both",
         {{QStringLiteral("desktop-startup-id"), QStringLiteral("x")},
          {QStringLiteral("activation-token"), QStringLiteral("w")}},
         "w"},
        {"of a wrong type", {{QStringLiteral("activation-token"), QVariantList{1, 2}}}, ""},
    };
    ApplicationService service(bus.connection(), name);
    ASSERT_EQ(service.start({}, {}), Start::First);
    QSignalSpy opened(&service, &ApplicationService::opened);
    for (const PlatformDataCase& row : rows) {
        opened.clear();
        EXPECT_EQ(call(QStringLiteral("Activate"), {row.data}).type(), QDBusMessage::ReplyMessage)
            << row.name;
        ASSERT_EQ(opened.size(), 1) << row.name;
        EXPECT_EQ(opened[0][1].toString(), QLatin1String(row.token)) << row.name;
    }
}

// The same PDF must not open twice because the desktop writes its address in another way.
TEST_F(Service, AddressesOfTheDesktopBecomeThoseOfThePanels)
{
    ApplicationService service(bus.connection(), name);
    ASSERT_EQ(service.start({}, {}), Start::First);
    QSignalSpy opened(&service, &ApplicationService::opened);
    const QStringList uris{QStringLiteral("file:///tmp/a%20%c3%a4%23%2525.pdf"),
                           QStringLiteral("file:/tmp/b%2dc.pdf"), QStringLiteral("sftp://host/c.pdf")};

    EXPECT_EQ(call(QStringLiteral("Open"), {uris, QVariantMap()}).type(), QDBusMessage::ReplyMessage);

    const QList<QUrl> wanted{QUrl::fromLocalFile(QStringLiteral("/tmp/a ä#%25.pdf")),
                             QUrl::fromLocalFile(QStringLiteral("/tmp/b-c.pdf")),
                             QUrl(QStringLiteral("sftp://host/c.pdf"))};
    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened[0][0].value<QList<QUrl>>(), wanted);
}

TEST_F(Service, UnknownActionAtLeastShowsTheWindow)
{
    ApplicationService service(bus.connection(), name);
    ASSERT_EQ(service.start({}, {}), Start::First);
    QSignalSpy opened(&service, &ApplicationService::opened);
    call(QStringLiteral("ActivateAction"), {QStringLiteral("new"), QVariantList(), QVariantMap()});
    EXPECT_EQ(opened.size(), 1);
}

TEST(SessionBus, IsNotStartedWhereThereIsNone)
{
    const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("XDG_RUNTIME_DIR", "/nonexistent");
    EXPECT_FALSE(sessionBus());
    address.isNull() ? qunsetenv("DBUS_SESSION_BUS_ADDRESS") : qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    runtime.isNull() ? qunsetenv("XDG_RUNTIME_DIR") : qputenv("XDG_RUNTIME_DIR", runtime);
}

TEST(StartupId, TellsItsTime)
{
    EXPECT_EQ(timeOfStartup(QStringLiteral("gnome-shell/files/812-3-host_TIME4294967295")), 4294967295u);
    EXPECT_EQ(timeOfStartup(QStringLiteral("a_TIME1_TIME22")), 22u);
    EXPECT_EQ(timeOfStartup(QStringLiteral("a_TIME0")), 0u);
    for (const char* odd : {"", "token", "_TIME", "a_TIMEx", "a_TIME-1", "a_TIME4294967296"})
        EXPECT_EQ(timeOfStartup(QLatin1String(odd)), std::nullopt) << odd;
}

} // namespace
} // namespace folvane
