#include "shell/SystemEvents.h"

#include "WindowTest.h"

#include "config.h"
#include "controls/sheets/Alert.h"
#include "platform/desktop/ApplicationService.h"
#include "shell/PasswordPrompt.h"
#include "support/PrivateBus.h"

#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QSignalSpy>
#include <QTimer>

#include <algorithm>
#include <memory>
#include <vector>

namespace folvane {
namespace {

class SystemEventsTest : public WindowTest {
protected:
    QStringList names() const
    {
        QStringList result;
        for (const OpenFilePtr& file : model.files.value())
            result.append(file->name);
        return result;
    }
    bool hasDocuments(int count)
    {
        return waitFor([&] { return model.files.value().size() == count; });
    }
    /// The file that the password question is about.
    QString questioned() const
    {
        const std::optional<PasswordRequest> request = model.passwordRequest.value();
        return request ? request->fileName : QString();
    }
    void answerPassword(const QString& password)
    {
        ASSERT_TRUE(waitFor([&] { return shown<PasswordPrompt>() != nullptr; }));
        QTest::keyClicks(shown<PasswordPrompt>()->findChild<QLineEdit*>(), password);
        QTest::keyClick(shown<PasswordPrompt>()->findChild<QLineEdit*>(), Qt::Key_Return);
    }
    /// Presses the button of the question as soon as it is up; returns what it asked.
    void answerQuestion(const QString& button, QString* asked)
    {
        QTimer::singleShot(0, &window, [=, this] {
            Alert* const alert = shown<Alert>();
            if (!alert) {
                answerQuestion(button, asked);
                return;
            }
            *asked = alert->windowTitle();
            press(alert, button);
        });
    }

    SystemEvents events;
};

TEST_F(SystemEventsTest, FilesThatComeBeforeTheWindowOpenWithIt)
{
    const QUrl one = makePdf(QStringLiteral("one.pdf"), 1);
    const QUrl two = makePdf(QStringLiteral("two.pdf"), 2);
    events.openInFront({one}, {});
    events.openInFront({two}, {});
    EXPECT_TRUE(names().isEmpty());

    events.attach(model, window);

    ASSERT_TRUE(hasDocuments(2));
    EXPECT_EQ(names(), (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
    EXPECT_EQ(model.errorMessage.value(), std::nullopt);
}

TEST_F(SystemEventsTest, FilesThatComeDuringAPasswordQuestionWaitTheirTurn)
{
    const QUrl first = makeLocked(QStringLiteral("first.pdf"), QStringLiteral("1"));
    const QUrl second = QUrl::fromLocalFile(folder.filePath(QStringLiteral("second.pdf")));
    ASSERT_TRUE(QFile::copy(first.toLocalFile(), second.toLocalFile()));
    const QUrl open = makePdf(QStringLiteral("open.pdf"), 1);
    events.attach(model, window);
    events.openInFront({first}, {});
    ASSERT_TRUE(waitFor([&] { return shown<PasswordPrompt>() != nullptr; }));

    events.openInFront({second}, {});
    events.openInFront({open}, {});
    ASSERT_TRUE(hasDocuments(1)) << "a file without a lock need not wait";
    EXPECT_EQ(questioned(), QStringLiteral("first.pdf"));

    answerPassword(QStringLiteral("1"));
    ASSERT_TRUE(hasDocuments(2));
    ASSERT_TRUE(waitFor([&] { return model.passwordRequest.value().has_value(); }));
    EXPECT_EQ(questioned(), QStringLiteral("second.pdf"));
    answerPassword(QStringLiteral("1"));
    ASSERT_TRUE(hasDocuments(3));
    EXPECT_EQ(names(),
              (QStringList{QStringLiteral("open"), QStringLiteral("first"), QStringLiteral("second")}));
}

TEST_F(SystemEventsTest, ClosedWindowWithChangesComesBack)
{
    events.attach(model, window);
    window.setCanComeBack(true);
    openPages(2)->isEdited = true;
    window.close();
    ASSERT_FALSE(window.isVisible());

    events.openInFront({}, QStringLiteral("host_TIME1"));

    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(names(), QStringList{QStringLiteral("report")});
}

TEST_F(SystemEventsTest, MinimizedWindowComesBack)
{
    events.attach(model, window);
    window.showMinimized();
    events.openInFront({}, {});
    EXPECT_FALSE(window.isMinimized());
    EXPECT_TRUE(window.isVisible());
}

TEST_F(SystemEventsTest, SessionEndsWithoutAQuestionWhenNothingIsLost)
{
    EXPECT_TRUE(events.allowsLogOut(true)) << "before there is a window";
    events.attach(model, window);
    openPages(1);
    EXPECT_TRUE(events.allowsLogOut(true));
    EXPECT_TRUE(events.allowsLogOut(false));
}

TEST_F(SystemEventsTest, SessionEndsOnlyWhenChangesAreGivenUp)
{
    events.attach(model, window);
    openPages(1)->isEdited = true;
    QString asked;
    answerQuestion(QStringLiteral("Cancel"), &asked);
    EXPECT_FALSE(events.allowsLogOut(true));
    EXPECT_EQ(asked, QStringLiteral("Quit without saving?"));

    answerQuestion(QStringLiteral("Quit Anyway"), &asked);
    EXPECT_TRUE(events.allowsLogOut(true));
}

TEST_F(SystemEventsTest, SessionStaysWhenNobodyMayBeAskedAboutChanges)
{
    events.attach(model, window);
    openPages(1)->isEdited = true;
    EXPECT_FALSE(events.allowsLogOut(false));
    EXPECT_EQ(shown<Alert>(), nullptr);
}

// Closing the window would only hide it.
TEST_F(SystemEventsTest, QuittingEndsTheProgramAlsoWithChanges)
{
    events.attach(model, window);
    openPages(1)->isEdited = true;
    QTimer::singleShot(0, [] { QCoreApplication::quit(); });
    QTimer impatience;
    impatience.setSingleShot(true);
    impatience.callOnTimeout([] { QCoreApplication::exit(1); });
    impatience.start(60'000);
    EXPECT_EQ(QCoreApplication::exec(), 0);
}

/// The program as a person starts it, on a bus of its own.
class ProgramStarts : public testing::Test {
protected:
    std::unique_ptr<QProcess> start(const QStringList& arguments, const QString& workingFolder = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus.address());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"), QStringLiteral("token"));
        auto program = std::make_unique<QProcess>();
        program->setProcessEnvironment(environment);
        program->setWorkingDirectory(workingFolder);
        program->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program->start(QStringLiteral(FOLVANE_PROGRAM), arguments);
        return program;
    }
    static bool ended(const QProcess& program) { return program.state() == QProcess::NotRunning; }

    PrivateBus bus;
};

TEST_F(ProgramStarts, RunningOneGetsTheFilesAndTheToken)
{
    ApplicationService running(bus.connection(), config::bundleIdentifier.toString());
    ASSERT_EQ(running.start({}, {}), ApplicationService::Start::First);
    QSignalSpy opened(&running, &ApplicationService::opened);
    const QTemporaryDir folder;
    const QString elsewhere = QStringLiteral("/tmp/other folder/b.png");

    const auto second = start(
        {QStringLiteral("100% ä #1.pdf"), elsewhere, QStringLiteral("file:///tmp/c%20d.pdf")}, folder.path());

    ASSERT_TRUE(QTest::qWaitFor([&] { return ended(*second); }, 60'000));
    EXPECT_EQ(second->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(second->exitCode(), 0);
    const QList<QUrl> wanted{QUrl::fromLocalFile(folder.filePath(QStringLiteral("100% ä #1.pdf"))),
                             QUrl::fromLocalFile(elsewhere),
                             QUrl::fromLocalFile(QStringLiteral("/tmp/c d.pdf"))};
    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened[0][0].value<QList<QUrl>>(), wanted);
    EXPECT_EQ(opened[0][1].toString(), QStringLiteral("token"));
}

TEST_F(ProgramStarts, OfManyAtTheSameMomentOneGoesOn)
{
    constexpr int starts = 5;
    std::vector<std::unique_ptr<QProcess>> programs;
    programs.reserve(starts);
    for (int i = 0; i < starts; ++i)
        programs.push_back(start({}));
    const auto allButOneEnded = [&] {
        return std::ranges::count_if(programs, [](const auto& one) { return ended(*one); }) == starts - 1;
    };
    ASSERT_TRUE(QTest::qWaitFor(allButOneEnded, 60'000));
    for (const auto& program : programs) {
        if (ended(*program))
            EXPECT_EQ(program->exitCode(), 0);
    }

    const auto later = start({});
    ASSERT_TRUE(QTest::qWaitFor([&] { return ended(*later); }, 60'000));
    EXPECT_TRUE(allButOneEnded()) << "the first one has gone with a later start";
    for (const auto& program : programs) {
        program->kill();
        program->waitForFinished();
    }
}

} // namespace
} // namespace folvane
