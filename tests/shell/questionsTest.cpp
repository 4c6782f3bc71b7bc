#include "shell/WindowTest.h"

#include "controls/sheets/Alert.h"
#include "tools/split/SplitSheet.h"

#include <QSignalSpy>
#include <QTimer>

namespace folvane {
namespace {

using Questions = WindowTest;

TEST_F(Questions, ASheetGoesWithItsFieldAndWritesNothing)
{
    const OpenFilePtr file = openPages(2);
    const std::function<void()> ways[] = {
        [this] { hand.key(Qt::Key_Escape); }, [this] { hand.press("Cancel"); },
        [this] { shown<SplitSheet>()->close(); }, [this, file] { model.close(file); }};
    for (const auto& dismiss : ways) {
        model.sheet = FileSheet{FileSheet::Kind::Split, file->id};
        ASSERT_TRUE(shown<SplitSheet>());
        dismiss();
        EXPECT_FALSE(shown<SplitSheet>());
        EXPECT_EQ(model.sheet.value(), std::nullopt);
    }
    EXPECT_TRUE(panels.asked.isEmpty());
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
