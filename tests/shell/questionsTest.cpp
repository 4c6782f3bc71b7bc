#include "shell/WindowTest.h"

#include "controls/sheets/Alert.h"
#include "documents/currentFile.h"
#include "shell/PasswordPrompt.h"
#include "support/await.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTimer>

namespace folvane {
namespace {

using Questions = WindowTest;

enum class Dismissal { Escape, Cancel, Close };

class Prompt : public WindowTest, public testing::WithParamInterface<Dismissal> {};

TEST_P(Prompt, DismissedInAnyWayTheOpeningGoesOnWithTheNextFile)
{
    const QUrl locked = makeLocked(QStringLiteral("locked.pdf"), QStringLiteral("secret"));
    const QUrl open = makePdf(QStringLiteral("open.pdf"), 1);
    QCoro::Task<> opening = model.open({locked, open});
    ASSERT_TRUE(waitFor([this] { return shown<PasswordPrompt>() != nullptr; }));
    auto* prompt = shown<PasswordPrompt>();
    switch (GetParam()) {
    case Dismissal::Escape: QTest::keyClick(prompt, Qt::Key_Escape); break;
    case Dismissal::Cancel: press(prompt, QStringLiteral("Cancel")); break;
    case Dismissal::Close: prompt->close(); break;
    }
    await(std::move(opening));
    ASSERT_EQ(model.files.value().size(), 1);
    EXPECT_EQ(model.files.value().first()->url, open);
    EXPECT_EQ(model.errorMessage.value(), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Ways, Prompt,
                         testing::Values(Dismissal::Escape, Dismissal::Cancel, Dismissal::Close));

TEST_F(Questions, AWrongPasswordAsksAgainWithAnEmptyField)
{
    const QUrl locked = makeLocked(QStringLiteral("locked.pdf"), QStringLiteral("secret"));
    QCoro::Task<> opening = model.open({locked});
    ASSERT_TRUE(waitFor([this] { return shown<PasswordPrompt>() != nullptr; }));
    const QUuid first = model.passwordRequest.value()->id;
    auto* field = shown<PasswordPrompt>()->findChild<QLineEdit*>();
    EXPECT_EQ(field->echoMode(), QLineEdit::Password);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(model.passwordRequest.value()->id, first) << "Return in an empty field does nothing";
    QTest::keyClicks(field, QStringLiteral("wrong"));
    QTest::keyClick(field, Qt::Key_Return);
    ASSERT_TRUE(waitFor([this, first] {
        return model.passwordRequest.value() && model.passwordRequest.value()->id != first;
    }));
    EXPECT_TRUE(model.passwordRequest.value()->wasWrong);
    field = shown<PasswordPrompt>()->findChild<QLineEdit*>();
    EXPECT_EQ(field->text(), QString());
    QTest::keyClicks(field, QStringLiteral("secret"));
    press(shown<PasswordPrompt>(), QStringLiteral("Open"));
    await(std::move(opening));
    EXPECT_TRUE(currentFile(model));
    EXPECT_FALSE(shown<PasswordPrompt>());
}

TEST_F(Questions, ASecondErrorReplacesTheTextOfTheFirst)
{
    model.errorMessage = QStringLiteral("One.");
    auto* alert = shown<Alert>();
    model.errorMessage = QStringLiteral("Two.");
    EXPECT_EQ(shown<Alert>(), alert);
    EXPECT_EQ(alert->accessibleDescription(), QStringLiteral("Two."));
    QTest::keyClick(alert, Qt::Key_Escape);
    EXPECT_EQ(model.errorMessage.value(), std::nullopt);
    EXPECT_FALSE(shown<Alert>());
}

TEST_F(Questions, ClosingAnEditedDocumentAsks)
{
    const OpenFilePtr file = openPages(2);
    clickPage(0);
    QTest::keyClick(&grid(), Qt::Key_Delete);
    menuEntry(QStringLiteral("Close File"))->trigger();
    ASSERT_TRUE(shown<Alert>());
    EXPECT_EQ(shown<Alert>()->windowTitle(), QStringLiteral("Save changes to “report”?"));
    press(shown<Alert>(), QStringLiteral("Cancel"));
    EXPECT_EQ(model.files.value().size(), 1);
    EXPECT_EQ(model.closingFile.value(), nullptr);

    menuEntry(QStringLiteral("Close File"))->trigger();
    press(shown<Alert>(), QStringLiteral("Save As…"));
    EXPECT_EQ(panels.asked.size(), 1);
    EXPECT_EQ(model.files.value().size(), 1) << "saving from the question does not close";

    press(window.centralWidget(), QStringLiteral("Close “report”"));
    press(shown<Alert>(), QStringLiteral("Don't Save"));
    QCoreApplication::processEvents();
    EXPECT_TRUE(model.files.value().isEmpty());
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Folvane"));
}

TEST_F(Questions, QuitNamesAllEditedDocumentsInOneSentenceAndCancelKeepsThem)
{
    for (const QString& name : {QStringLiteral("Lease"), QStringLiteral("Taxes")}) {
        openPages(2, name);
        clickPage(0);
        key(Qt::Key_Delete);
    }
    openPages(1, QStringLiteral("Untouched"));
    menuEntry(QStringLiteral("Quit"))->trigger();
    auto* alert = shown<Alert>();
    ASSERT_TRUE(alert);
    EXPECT_EQ(alert->windowTitle(), QStringLiteral("Quit without saving?"));
    EXPECT_EQ(alert->accessibleDescription(),
              QStringLiteral("Changes in Lease and Taxes aren't saved. Use Save As… to keep them."));
    press(alert, QStringLiteral("Cancel"));
    EXPECT_EQ(model.files.value().size(), 3);
    EXPECT_TRUE(window.isVisible());
}

class ClosedWindow : public WindowTest, public testing::WithParamInterface<bool> {};

TEST_P(ClosedWindow, WithChangesStepsAsideWithoutAQuestionAndComesBack)
{
    window.setCanComeBack(GetParam());
    const OpenFilePtr file = openPages(2);
    clickPage(0);
    key(Qt::Key_Delete);
    EXPECT_FALSE(window.close());
    EXPECT_FALSE(shown<Alert>()) << "only Quit asks";
    EXPECT_EQ(window.isVisible(), !GetParam());
    EXPECT_EQ(window.isMinimized(), !GetParam());
    window.bringToFront(QString());
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(window.isMinimized());
    EXPECT_EQ(model.files.value(), (QList{file}));
    EXPECT_TRUE(file->isEdited);
}

INSTANTIATE_TEST_SUITE_P(CanComeBack, ClosedWindow, testing::Bool());

TEST_F(Questions, ClosingTheWindowWithoutChangesQuits)
{
    openPages(2);
    const QSignalSpy quitting(QCoreApplication::instance(), &QCoreApplication::aboutToQuit);
    QTimer::singleShot(0, &window, [this] { window.close(); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_EQ(quitting.size(), 1);
}

} // namespace
} // namespace folvane
