#include "shell/SystemEvents.h"

#include "WindowTest.h"

#include "config.h"
#include "controls/sheets/Alert.h"
#include "platform/desktop/ApplicationService.h"
#include "support/PrivateBus.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTimer>

namespace folvane {
namespace {

class SystemEventsTest : public WindowTest {
protected:
    /// Presses the button of the question as soon as it is up.
    void answerQuestion(const QString& name)
    {
        QTimer::singleShot(0, &window, [this, name] {
            if (!shown<Alert>())
                return answerQuestion(name);
            EXPECT_EQ(shown<Alert>()->windowTitle(), "Quit without saving?");
            hand.press(name);
        });
    }

    SystemEvents events;
};

TEST_F(SystemEventsTest, FilesThatComeBeforeTheWindowOpenWithItAndTheNextBringItToTheFront)
{
    events.openInFront({makePdf("one.pdf", 1)}, {});
    events.openInFront({makePdf("two.pdf", 2)}, {});
    EXPECT_TRUE(model.files.value().isEmpty());
    events.attach(model, window);
    ASSERT_TRUE(waitFor([this] { return model.files.value().size() == 2; }));
    EXPECT_EQ(model.files.value().first()->name, "one");
    EXPECT_EQ(model.errorMessage.value(), std::nullopt);
    window.showMinimized();
    events.openInFront({}, "host_TIME1");
    EXPECT_FALSE(window.isMinimized());
}

TEST_F(SystemEventsTest, TheSessionEndsOnlyWhenNothingIsLostOrChangesAreGivenUp)
{
    EXPECT_TRUE(events.allowsLogOut(true)) << "before there is a window";
    events.attach(model, window);
    const OpenFilePtr file = openPages(1);
    EXPECT_TRUE(events.allowsLogOut(true) && events.allowsLogOut(false));
    file->isEdited = true;
    EXPECT_FALSE(events.allowsLogOut(false)) << "nobody may be asked";
    EXPECT_EQ(shown<Alert>(), nullptr);
    answerQuestion("Cancel");
    EXPECT_FALSE(events.allowsLogOut(true));
    answerQuestion("Quit Anyway");
    EXPECT_TRUE(events.allowsLogOut(true));
}

// Closing the window would only hide it.
TEST_F(SystemEventsTest, QuittingEndsTheProgramAlsoWithChanges)
{
    events.attach(model, window);
    openPages(1)->isEdited = true;
    QTimer::singleShot(0, [] { QCoreApplication::quit(); });
    QTimer::singleShot(60'000, &window, [] { QCoreApplication::exit(1); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
}

TEST(ProgramStarts, OnlyToHandItsFilesAndTokenToTheOneThatRuns)
{
    PrivateBus bus;
    ApplicationService running(bus.connection(), config::bundleIdentifier.toString());
    ASSERT_EQ(running.start({}, {}), ApplicationService::Start::First);
    const QSignalSpy opened(&running, &ApplicationService::opened);
    const QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DBUS_SESSION_BUS_ADDRESS", bus.address());
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("XDG_ACTIVATION_TOKEN", "token");
    QProcess second;
    second.setProcessEnvironment(environment);
    second.setWorkingDirectory(folder.path());
    second.start(QStringLiteral(FOLVANE_PROGRAM),
                 {"100% ä #1.pdf", "/tmp/other folder/b.png", "file:///tmp/c%20d.pdf"});
    ASSERT_TRUE(QTest::qWaitFor([&] { return second.state() == QProcess::NotRunning; }, 60'000));
    EXPECT_TRUE(second.exitStatus() == QProcess::NormalExit && second.exitCode() == 0);
    const QList<QUrl> wanted{QUrl::fromLocalFile(folder.filePath("100% ä #1.pdf")),
                             QUrl::fromLocalFile("/tmp/other folder/b.png"),
                             QUrl::fromLocalFile("/tmp/c d.pdf")};
    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened[0][0].value<QList<QUrl>>(), wanted);
    EXPECT_EQ(opened[0][1].toString(), "token");
}

} // namespace
} // namespace folvane
