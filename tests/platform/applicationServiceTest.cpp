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

const QString name = "example.test-maker.program";
const QString path = "/example/test_maker/program";

class Service : public testing::Test {
protected:
    PrivateBus bus;
};

TEST_F(Service, ASecondStartWithoutFilesBringsTheFirstToTheFront)
{
    ApplicationService first(bus.connection(), name);
    ASSERT_EQ(first.start({}, {}), Start::First);
    const QSignalSpy opened(&first, &ApplicationService::opened);
    const auto second = [&] { return ApplicationService(bus.connection(), name).start({}, "token"); };
    EXPECT_EQ(await(inBackground(second)), Start::HandedOver); // it blocks
    EXPECT_EQ(opened.value(0), QVariantList({QVariant::fromValue(QList<QUrl>()), "token"}));
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
    const QStringList uris{"file:///tmp/a%20%c3%a4%23%2525.pdf", "file:/tmp/b%2dc.pdf#page=2",
                           "sftp://host/c.pdf"};
    // The same PDF must not open twice because the desktop writes its address in another way.
    const QList<QUrl> asPanelsGiveThem{QUrl::fromLocalFile("/tmp/a ä#%25.pdf"),
                                       QUrl::fromLocalFile("/tmp/b-c.pdf"), QUrl("sftp://host/c.pdf")};
    const QString modern = "activation-token", old = "desktop-startup-id";
    using Row = std::tuple<const char*, QVariantList, QList<QUrl>, const char*>;
    const Row rows[]{
        {"Activate", {QVariantMap()}, {}, ""},
        {"Activate", {QVariantMap{{old, "x"}}}, {}, "x"},
        {"Activate", {QVariantMap{{old, "x"}, {modern, "w"}}}, {}, "w"},
        {"Activate", {QVariantMap{{modern, QVariantList{1, 2}}}}, {}, ""},
        {"Open", {uris, QVariantMap()}, asPanelsGiveThem, ""},
        {"ActivateAction", {"unknown", QVariantList(), QVariantMap()}, {}, ""}, // at least shows the window
    };
    ApplicationService service(bus.connection(), name);
    ASSERT_EQ(service.start({}, {}), Start::First);
    QSignalSpy opened(&service, &ApplicationService::opened);
    for (const auto& [method, arguments, files, token] : rows) {
        opened.clear();
        QDBusMessage call = QDBusMessage::createMethodCall(name, path, "org.freedesktop.Application", method);
        call.setArguments(arguments);
        bus.connection().call(call, QDBus::BlockWithGui);
        EXPECT_EQ(opened.value(0), QVariantList({QVariant::fromValue(files), token})) << method;
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
    EXPECT_EQ(timeOfStartup("gnome-shell/files/812-3-host_TIME4294967295"), 4294967295u);
    EXPECT_EQ(timeOfStartup("a_TIME1_TIME22"), 22u);
    EXPECT_EQ(timeOfStartup("a_TIME0"), 0u);
    for (const char* odd : {"", "token", "_TIME", "a_TIMEx", "a_TIME-1", "a_TIME4294967296"})
        EXPECT_EQ(timeOfStartup(odd), std::nullopt) << odd;
}

} // namespace
} // namespace folvane
