#include "controls/BrandMark.h"
#include "controls/ControlGroup.h"
#include "controls/LinkButton.h"
#include "controls/SectionHeader.h"
#include "controls/SegmentedPicker.h"
#include "controls/sheets/Alert.h"
#include "controls/sheets/NoteBanner.h"

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace folvane {
namespace {

class Keyboard : public testing::Test {
protected:
    void SetUp() override
    {
        row.addWidget(picker);
        row.addWidget(group);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    static void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    QWidget window;
    QHBoxLayout row{&window};
    SegmentedPicker* picker = new SegmentedPicker("Mode", {"Ranges", "Every", "Single"});
    QList<QRadioButton*> segments = picker->findChildren<QRadioButton*>();
    ControlGroup* group = new ControlGroup;
    QAbstractButton* off = group->addButton(Icon::Delete, "Delete Pages", {});
    QAbstractButton* turn = group->addButton(Icon::RotateRight, "Rotate Right", {});
};

TEST_F(Keyboard, ArrowsMoveThePickAndTabLeavesItForWhatIsEnabled)
{
    off->setEnabled(false);
    const QSignalSpy changed(picker, &SegmentedPicker::currentChanged);
    segments[0]->setFocus(Qt::TabFocusReason);
    for (const auto& [key, pick] : {std::pair{Qt::Key_Right, 1}, std::pair{Qt::Key_Right, 2},
                                    std::pair{Qt::Key_Right, 2}, std::pair{Qt::Key_Left, 1}}) {
        press(key);
        EXPECT_EQ(picker->current(), pick);
    }
    EXPECT_EQ(changed.size(), 3);
    press(Qt::Key_Tab);
    EXPECT_TRUE(turn->hasFocus());
    const QSignalSpy turned(turn, &QAbstractButton::clicked);
    press(Qt::Key_Space);
    press(Qt::Key_Return);
    EXPECT_EQ(turned.size(), 2);
    press(Qt::Key_Backtab);
    EXPECT_TRUE(segments[1]->hasFocus());
    QTest::mouseClick(segments[2], Qt::LeftButton, {}, segments[2]->rect().bottomRight() - QPoint(3, 3));
    EXPECT_EQ(picker->current(), 2) << "clicked at its edge";
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(segments[2])->state().checked);
}

TEST_F(Keyboard, AlertsAreWalkedFromLeftToRightAndEscapeCancels)
{
    Alert alert("Save changes?", "Your changes will be lost.");
    int saved = 0;
    alert.addButton("Save As…", Alert::Role::Default, [&saved] { ++saved; });
    alert.addButton("Don't Save", Alert::Role::Destructive);
    alert.addButton("Cancel", Alert::Role::Cancel);
    const QList<Button*> buttons = alert.findChildren<Button*>();
    alert.open();
    EXPECT_TRUE(buttons[2]->x() < buttons[1]->x() && buttons[1]->x() < buttons[0]->x());
    ASSERT_TRUE(QTest::qWaitForWindowActive(&alert));
    EXPECT_TRUE(buttons[0]->hasFocus());
    for (const int next : {2, 1, 0}) {
        press(Qt::Key_Tab);
        EXPECT_TRUE(buttons[next]->hasFocus());
    }
    QTest::keyClick(&alert, Qt::Key_Escape);
    EXPECT_TRUE(alert.isHidden() && alert.result() == QDialog::Rejected);
    alert.open();
    QTest::keyClick(&alert, Qt::Key_Return);
    EXPECT_EQ(saved, 1);
}

TEST_F(Keyboard, ScreenReadersHearWhatEachControlIs)
{
    Button tool(Button::Kind::Tool, "Sign && Stamp");
    tool.setIconOnly(true);
    LinkButton link("Show in Folder");
    NoteBanner note("Take care.", NoteBanner::Tone::Danger);
    SectionHeader header("Files");
    struct Heard {
        QWidget* widget;
        QAccessible::Role role;
        const char* name;
    };
    for (const auto& [widget, role, name] :
         {Heard{group, QAccessible::Grouping, ""}, Heard{turn, QAccessible::PushButton, "Rotate Right"},
          Heard{&link, QAccessible::PushButton, "Show in Folder"},
          Heard{&note, QAccessible::StaticText, "Take care."}, Heard{&header, QAccessible::Heading, "Files"},
          Heard{picker, QAccessible::Grouping, "Mode"},
          Heard{segments[2], QAccessible::RadioButton, "Single"},
          Heard{&tool, QAccessible::PushButton, "Sign & Stamp"}}) {
        const QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
        EXPECT_EQ(interface->role(), role) << name;
        EXPECT_EQ(interface->text(QAccessible::Name), QString::fromUtf8(name));
    }
    BrandMark mark(24, &window);
    mark.show();
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(&mark)->state().invisible);
}

} // namespace
} // namespace folvane
