#include "FakeNotifications.h"
#include "WindowTest.h"

#include "controls/sheets/Alert.h"
#include "shell/ClosedWindowNotice.h"
#include "support/PrivateBus.h"

#include <QScreen>
#include <QSignalSpy>
#include <QTimer>

namespace folvane {
namespace {

using ClosedWindow = WindowTest;

TEST_F(ClosedWindow, IsToldOfAndComesBackByTheNotice)
{
    PrivateBus bus;
    FakeNotifications notifications;
    QDBusConnection desktop = bus.connection();
    ASSERT_TRUE(desktop.registerObject("/org/freedesktop/Notifications", &notifications,
                                       QDBusConnection::ExportAllContents));
    ASSERT_TRUE(desktop.registerService("org.freedesktop.Notifications"));
    const ClosedWindowNotice notice(model, window, bus.connection());
    window.setCanComeBack(true);
    openPages(1, "R&D")->isEdited = true;
    const QString text = "Changes in R&D aren't saved. Use Save As… to keep them.";
    const auto isUp = [&notifications] { return !notifications.shown.isEmpty(); };
    const auto isGone = [&notifications] { return notifications.shown.isEmpty(); };
    for (const bool markup : {false, true}) {
        notifications.capabilities = markup ? QStringList{"body-markup"} : QStringList();
        window.close();
        ASSERT_TRUE(waitFor(isUp));
        EXPECT_EQ(notifications.shown, markup ? text.toHtmlEscaped() : text);
        notifications.click();
        ASSERT_TRUE(waitFor([this] { return window.isVisible(); }));
        EXPECT_TRUE(waitFor(isGone)) << "it goes with its reason";
    }

    const uint before = notifications.id;
    window.close();
    window.bringToFront({});
    window.close();
    window.bringToFront({});
    window.close();
    ASSERT_TRUE(waitFor(isUp));
    window.bringToFront({});
    EXPECT_TRUE(waitFor(isGone));
    EXPECT_EQ(notifications.id, before + 1) << "what was overtaken never came up";
}

class ClosedDuringAJob : public WindowTest,
                         public testing::WithParamInterface<std::tuple<bool, bool, bool>> {};

TEST_P(ClosedDuringAJob, TheProgramEndsWithItUnlessThereIsMoreToTell)
{
    const auto [canComeBack, fails, changes] = GetParam();
    window.setCanComeBack(canComeBack);
    openPages(1)->isEdited = changes;
    model.busy = BusyState{"Splitting…", {}};
    EXPECT_FALSE(window.close());
    QTimer::singleShot(0, &window, [this, broken = fails] {
        if (broken)
            model.errorMessage = "The disk is full.";
        model.busy = std::nullopt;
        QTimer::singleShot(0, &window, [] { QCoreApplication::exit(1); });
    });
    const bool ends = !fails && !changes;
    EXPECT_EQ(QCoreApplication::exec(), ends ? 0 : 1);
    EXPECT_EQ(window.isVisible() && !window.isMinimized(), fails);
    EXPECT_EQ(shown<Alert>() != nullptr, fails);
    model.errorMessage = std::nullopt;
}

INSTANTIATE_TEST_SUITE_P(Outcomes, ClosedDuringAJob,
                         testing::Combine(testing::Bool(), testing::Bool(), testing::Bool()));

TEST_F(ClosedWindow, LeavesItsPlaceToTheNextUnlessThatIsOffTheScreen)
{
    const QRect screen = window.screen()->availableGeometry();
    const QRect inside(screen.topLeft() + QPoint(20, 30), window.minimumSize());
    const auto next = [this](const QRect& before) {
        std::make_unique<RootView>(model)->setGeometry(before);
        return RootView(model).geometry();
    };
    EXPECT_EQ(next(inside), inside);
    EXPECT_TRUE(screen.intersects(next(inside.translated(90'000, 90'000))));
    std::make_unique<RootView>(model)->showMaximized();
    EXPECT_TRUE(RootView(model).isMaximized());
}

} // namespace
} // namespace folvane
