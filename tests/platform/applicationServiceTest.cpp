#include "platform/desktop/ApplicationService.h"
#include "platform/desktop/sessionBus.h"
#include "platform/desktop/x11Activation.h"
#include "platform/tasks/background.h"
#include "support/PrivateBus.h"
#include "support/await.h"

#include <QDBusMessage>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace folvane {
namespace {

using namespace std::chrono_literals;
using Start = ApplicationService::Start;

const QString name = QStringLiteral("example.test-maker.program");
const QString path = QStringLiteral("/example/test_maker/program");

class Service : public testing::Test {
protected:
    PrivateBus bus;
};

TEST_F(Service, SecondStartHandsItsFilesOver)
{
    const QList<QUrl> oddFiles{QUrl::fromLocalFile(QStringLiteral("/tmp/a b/50%25 ä #1?.pdf")),
                               QUrl::fromLocalFile(QStringLiteral("/tmp/+&;'\".png"))};
    for (const QList<QUrl>& files : {oddFiles, QList<QUrl>()}) { // none: it only comes to the front
        ApplicationService first(bus.connection(), name);        // the name is free again after the end
        ASSERT_EQ(first.start({}, {}), Start::First);
        QSignalSpy opened(&first, &ApplicationService::opened);
        const auto second = [&] {
            return ApplicationService(bus.connection(), name).start(files, QStringLiteral("token_TIME7"));
        };
        EXPECT_EQ(await(inBackground(second)), Start::HandedOver); // it blocks

        ASSERT_EQ(opened.size(), 1);
        EXPECT_EQ(opened[0][0].value<QList<QUrl>>(), files);
        EXPECT_EQ(opened[0][1].toString(), QStringLiteral("token_TIME7"));
    }
}

TEST_F(Service, StaysAloneWhereNobodyAnswers)
{
    {
        ApplicationService silent(bus.connection(), name); // nobody runs its event loop
        ASSERT_EQ(silent.start({}, {}), Start::First);
        EXPECT_EQ(ApplicationService(bus.connection(), name, 200ms).start({}, {}), Start::Alone);
    }
    ASSERT_TRUE(bus.connection().registerService(name)); // a stranger with our name
    EXPECT_EQ(ApplicationService(bus.connection(), name).start({}, {}), Start::Alone);
    EXPECT_EQ(ApplicationService(std::nullopt, name).start({}, {}), Start::Alone);
    const QDBusConnection broken = bus.connection();
    bus.stop();
    EXPECT_EQ(ApplicationService(broken, name).start({}, {}), Start::Alone);
}

TEST_F(Service, UnderstandsWhatTheDesktopCalls)
{
    const QString modern = QStringLiteral("activation-token"), old = QStringLiteral("desktop-startup-id");
    const QStringList uris{QStringLiteral("file:///tmp/a%20%c3%a4%23%2525.pdf"),
                           QStringLiteral("file:/tmp/b%2dc.pdf#page=2"), QStringLiteral("sftp://host/c.pdf")};
    // The same PDF must not open twice because the desktop writes its address in another way.
    const QStringList asPanelsWriteThem{QUrl::fromLocalFile(QStringLiteral("/tmp/a ä#%25.pdf")).toString(),
                                        QUrl::fromLocalFile(QStringLiteral("/tmp/b-c.pdf")).toString(),
                                        QStringLiteral("sftp://host/c.pdf")};
    using Row = std::tuple<const char*, QVariantList, QStringList, const char*>;
    const Row rows[]{
        {"Activate", {QVariantMap()}, {}, ""},
        {"Activate", {QVariantMap{{modern, "w"}}}, {}, "w"},
        {"Activate", {QVariantMap{{old, "x"}}}, {}, "x"},
        {"Activate", {QVariantMap{{old, "x"}, {modern, "w"}}}, {}, "w"},
        {"Activate", {QVariantMap{{modern, QVariantList{1, 2}}}}, {}, ""},
        {"Open", {uris, QVariantMap()}, asPanelsWriteThem, ""},
        {"ActivateAction", {"unknown", QVariantList(), QVariantMap()}, {}, ""}, // at least shows the window
    };
    ApplicationService service(bus.connection(), name);
    ASSERT_EQ(service.start({}, {}), Start::First);
    QSignalSpy opened(&service, &ApplicationService::opened);
    for (const auto& [method, arguments, files, token] : rows) {
        opened.clear();
        QDBusMessage call = QDBusMessage::createMethodCall(
            name, path, QStringLiteral("org.freedesktop.Application"), QLatin1String(method));
        call.setArguments(arguments);
        bus.connection().call(call, QDBus::BlockWithGui);
        ASSERT_EQ(opened.size(), 1) << method;
        EXPECT_EQ(QUrl::toStringList(opened[0][0].value<QList<QUrl>>()), files) << method;
        EXPECT_EQ(opened[0][1].toString(), QLatin1String(token)) << method;
    }
}

TEST(SessionBus, IsNotStartedWhereThereIsNone)
{
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("XDG_RUNTIME_DIR", "/nonexistent");
    EXPECT_FALSE(sessionBus());
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
