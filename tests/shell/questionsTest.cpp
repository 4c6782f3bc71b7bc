#include "shell/WindowTest.h"

#include "controls/sheets/Alert.h"
#include "shell/PasswordPrompt.h"
#include "support/await.h"
#include "tools/split/SplitSheet.h"

#include <QSignalSpy>
#include <QTimer>

namespace folvane {
namespace {

using Questions = WindowTest;

struct Dismissal {
    const char* name;
    void (*act)(Hand& hand, QDialog& asked);
};

class Dismissed : public WindowTest, public testing::WithParamInterface<Dismissal> {};

TEST_P(Dismissed, APasswordPromptLetsTheOpeningGoOnWithTheNextFile)
{
    const QUrl locked = makeLocked(folder.filePath("locked.pdf"), "secret");
    const QUrl open = makePdf("open.pdf", 1);
    QCoro::Task<> opening = model.open({locked, open});
    ASSERT_TRUE(waitFor([this] { return shown<PasswordPrompt>() != nullptr; }));
    hand.key(Qt::Key_Return);
    ASSERT_TRUE(shown<PasswordPrompt>()) << "Return in an empty field does nothing";
    GetParam().act(hand, *shown<PasswordPrompt>());
    await(std::move(opening));
    ASSERT_EQ(model.files.value().size(), 1);
    EXPECT_EQ(model.files.value().first()->url, open);
    EXPECT_EQ(model.errorMessage.value(), std::nullopt);
}

TEST_P(Dismissed, ASheetGoesWithItsFieldAndWritesNothing)
{
    model.sheet = FileSheet{FileSheet::Kind::Split, openPages(2)->id};
    ASSERT_TRUE(shown<SplitSheet>());
    GetParam().act(hand, *shown<SplitSheet>());
    EXPECT_EQ(shown<SplitSheet>(), nullptr);
    EXPECT_EQ(model.sheet.value(), std::nullopt);
    EXPECT_TRUE(panels.asked.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    By, Dismissed,
    testing::Values(Dismissal{"Escape", [](Hand& hand, QDialog&) { hand.key(Qt::Key_Escape); }},
                    Dismissal{"Cancel", [](Hand& hand, QDialog&) { hand.press("Cancel"); }},
                    Dismissal{"Close", [](Hand&, QDialog& asked) { asked.close(); }}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Questions, ASheetGoesWithItsDocument)
{
    const OpenFilePtr file = openPages(2);
    model.sheet = FileSheet{FileSheet::Kind::Split, file->id};
    model.close(file);
    EXPECT_EQ(shown<SplitSheet>(), nullptr);
    EXPECT_EQ(model.sheet.value(), std::nullopt);
}

TEST_F(Questions, ASecondErrorReplacesTheTextOfTheFirst)
{
    model.errorMessage = "One.";
    const auto* alert = shown<Alert>();
    model.errorMessage = "Two.";
    EXPECT_EQ(shown<Alert>(), alert);
    EXPECT_EQ(alert->accessibleDescription(), "Two.");
    hand.key(Qt::Key_Escape);
    EXPECT_EQ(model.errorMessage.value(), std::nullopt);
    EXPECT_FALSE(shown<Alert>());
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
