#include "shell/WindowTest.h"

#include "controls/sheets/Alert.h"
#include "shell/PasswordPrompt.h"
#include "support/await.h"
#include "tools/split/SplitSheet.h"

#include <QSignalSpy>
#include <QTimer>

namespace folvane {
namespace {

enum class Dismissal { Escape, Cancel, Close, ClosedDocument };

class Prompt : public WindowTest, public testing::WithParamInterface<Dismissal> {};

TEST_P(Prompt, DismissedInAnyWayTheOpeningGoesOnWithTheNextFile)
{
    const QUrl locked = makeLocked(QStringLiteral("locked.pdf"), QStringLiteral("secret"));
    const QUrl open = makePdf(QStringLiteral("open.pdf"), 1);
    QCoro::Task<> opening = model.open({locked, open});
    ASSERT_TRUE(waitFor([this] { return shown<PasswordPrompt>() != nullptr; }));
    hand.key(Qt::Key_Return);
    EXPECT_TRUE(shown<PasswordPrompt>()) << "Return in an empty field does nothing";
    switch (GetParam()) {
    case Dismissal::Escape: hand.key(Qt::Key_Escape); break;
    case Dismissal::Cancel: press(QStringLiteral("Cancel")); break;
    default: shown<PasswordPrompt>()->close();
    }
    await(std::move(opening));
    ASSERT_EQ(model.files.value().size(), 1);
    EXPECT_EQ(model.files.value().first()->url, open);
    EXPECT_EQ(model.errorMessage.value(), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Ways, Prompt,
                         testing::Values(Dismissal::Escape, Dismissal::Cancel, Dismissal::Close));

using Questions = WindowTest;

TEST_F(Questions, SheetsGoByEveryWayWithTheirFieldAndWriteNothing)
{
    for (const auto way :
         {Dismissal::Escape, Dismissal::Cancel, Dismissal::Close, Dismissal::ClosedDocument}) {
        const OpenFilePtr file = openPages(2);
        model.sheet = FileSheet{FileSheet::Kind::Split, file->id};
        ASSERT_TRUE(shown<SplitSheet>());
        switch (way) {
        case Dismissal::Escape: hand.key(Qt::Key_Escape); break;
        case Dismissal::Cancel: press(QStringLiteral("Cancel")); break;
        case Dismissal::Close: shown<SplitSheet>()->close(); break;
        case Dismissal::ClosedDocument: model.close(file); break;
        }
        EXPECT_EQ(shown<SplitSheet>(), nullptr) << int(way);
        EXPECT_EQ(model.sheet.value(), std::nullopt) << int(way);
    }
    EXPECT_TRUE(panels.asked.isEmpty());
}

TEST_F(Questions, ASecondErrorReplacesTheTextOfTheFirst)
{
    model.errorMessage = QStringLiteral("One.");
    const auto* alert = shown<Alert>();
    model.errorMessage = QStringLiteral("Two.");
    EXPECT_EQ(shown<Alert>(), alert);
    EXPECT_EQ(alert->accessibleDescription(), QStringLiteral("Two."));
    hand.key(Qt::Key_Escape);
    EXPECT_EQ(model.errorMessage.value(), std::nullopt);
    EXPECT_FALSE(shown<Alert>());
}

TEST_F(Questions, PasswordsMustBeTheSame)
{
    model.sheet = FileSheet{FileSheet::Kind::Password, openPages(1)->id};
    const auto* save = button(QStringLiteral("Save Protected Copy…"));
    EXPECT_EQ(button(QStringLiteral("Save a Copy without Password…")), nullptr);
    EXPECT_FALSE(save->isEnabled());
    hand.type(QStringLiteral("Secret"));
    hand.key(Qt::Key_Tab);
    hand.type(QStringLiteral("Secre"));
    EXPECT_FALSE(save->isEnabled());
    hand.type(QStringLiteral("t"));
    EXPECT_TRUE(save->isEnabled());
}

TEST_F(Questions, AWindowThatIsClosedWithChangesStepsAsideUnaskedAndComesBack)
{
    openPages(2)->isEdited = true;
    for (const bool canComeBack : {true, false}) {
        window.setCanComeBack(canComeBack);
        EXPECT_FALSE(window.close());
        EXPECT_FALSE(shown<Alert>()) << "only Quit asks";
        EXPECT_EQ(window.isVisible(), !canComeBack);
        EXPECT_EQ(window.isMinimized(), !canComeBack);
        window.bringToFront(QString());
        EXPECT_TRUE(window.isVisible() && !window.isMinimized());
    }
    EXPECT_EQ(model.files.value().size(), 1);
}

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
