#include "controls/BrandMark.h"
#include "controls/ControlGroup.h"
#include "controls/LinkButton.h"
#include "controls/SectionHeader.h"
#include "controls/SegmentedPicker.h"
#include "controls/pictures.h"
#include "controls/sheets/Alert.h"
#include "controls/sheets/NoteBanner.h"

#include <QAccessible>
#include <QAction>
#include <QHBoxLayout>
#include <QMenu>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>

namespace folvane {
namespace {

class Keyboard : public testing::Test {
protected:
    void show(QWidget* first, QWidget* second = nullptr)
    {
        row.addWidget(first);
        if (second)
            row.addWidget(second);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    static void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    QWidget window;
    QHBoxLayout row{&window};
};

TEST_F(Keyboard, ArrowsMoveThePickAndTabLeavesIt)
{
    auto* picker =
        new SegmentedPicker(QStringLiteral("Mode"),
                            {QStringLiteral("Ranges"), QStringLiteral("Every"), QStringLiteral("Single")});
    auto* after = new LinkButton(QStringLiteral("After"));
    show(picker, after);
    const QSignalSpy changed(picker, &SegmentedPicker::currentChanged);
    EXPECT_EQ(picker->current(), 0);
    picker->findChildren<QRadioButton*>().first()->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Right);
    EXPECT_EQ(picker->current(), 1);
    press(Qt::Key_Right);
    press(Qt::Key_Right); // there is no more
    EXPECT_EQ(picker->current(), 2);
    press(Qt::Key_Left);
    EXPECT_EQ(picker->current(), 1);
    EXPECT_EQ(changed.size(), 3);
    press(Qt::Key_Tab);
    EXPECT_TRUE(after->hasFocus());
    QTest::keyClick(after, Qt::Key_Backtab);
    EXPECT_EQ(QApplication::focusWidget(), picker->findChildren<QRadioButton*>().at(1));
}

TEST_F(Keyboard, AClickAnywhereOnASegmentChoosesIt)
{
    auto* picker =
        new SegmentedPicker(QStringLiteral("Format"), {QStringLiteral("JPEG"), QStringLiteral("PNG")});
    show(picker);
    auto* png = picker->findChildren<QRadioButton*>().last();
    QTest::mouseClick(png, Qt::LeftButton, {}, png->rect().bottomRight() - QPoint(3, 3));
    EXPECT_EQ(picker->current(), 1);
}

TEST_F(Keyboard, GroupsAreReachedAndPressedSegmentBySegment)
{
    auto* group = new ControlGroup;
    QAbstractButton* left =
        group->addButton(Icon::RotateLeft, QStringLiteral("Rotate Left"), QStringLiteral("Rotate left"));
    QAbstractButton* removed = group->addButton(Icon::Delete, QStringLiteral("Delete Pages"), {});
    QAbstractButton* right = group->addButton(Icon::RotateRight, QStringLiteral("Rotate Right"), {});
    removed->setEnabled(false);
    show(group);
    const QSignalSpy turned(right, &QAbstractButton::clicked);
    left->setFocus();
    press(Qt::Key_Tab);
    EXPECT_TRUE(right->hasFocus()) << "the disabled one is passed over";
    press(Qt::Key_Space);
    EXPECT_EQ(turned.size(), 1);
}

TEST_F(Keyboard, AlertsAreWalkedFromLeftToRightAndEscapeCancels)
{
    Alert alert(QStringLiteral("Save changes?"), QStringLiteral("Your changes will be lost."), &window);
    int saved = 0;
    alert.addButton(QStringLiteral("Save As…"), Alert::Role::Default, [&saved] { ++saved; });
    alert.addButton(QStringLiteral("Don't Save"), Alert::Role::Destructive);
    alert.addButton(QStringLiteral("Cancel"), Alert::Role::Cancel);
    const QList<Button*> buttons = alert.findChildren<Button*>();
    alert.open();
    EXPECT_LT(buttons[2]->x(), buttons[1]->x());
    EXPECT_LT(buttons[1]->x(), buttons[0]->x());
    ASSERT_TRUE(QTest::qWaitForWindowActive(&alert));
    EXPECT_TRUE(buttons[0]->hasFocus());
    buttons[2]->setFocus();
    press(Qt::Key_Tab);
    EXPECT_TRUE(buttons[1]->hasFocus());
    press(Qt::Key_Tab);
    EXPECT_TRUE(buttons[0]->hasFocus());
    const QSignalSpy finished(&alert, &QDialog::finished);
    QTest::keyClick(&alert, Qt::Key_Escape);
    ASSERT_EQ(finished.size(), 1);
    EXPECT_EQ(finished.first().first().toInt(), QDialog::Rejected);
    alert.open();
    QTest::keyClick(&alert, Qt::Key_Return);
    EXPECT_EQ(saved, 1);
}

void expectAccessible(QWidget* widget, QAccessible::Role role, const char* name)
{
    const QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
    ASSERT_TRUE(interface) << name;
    EXPECT_EQ(interface->role(), role) << name;
    EXPECT_EQ(interface->text(QAccessible::Name), QString::fromUtf8(name));
}

TEST(ScreenReader, HearsWhatEachControlIs)
{
    ControlGroup group;
    expectAccessible(&group, QAccessible::Grouping, "");
    expectAccessible(group.addButton(Icon::Delete, QStringLiteral("Delete Pages"), {}),
                     QAccessible::PushButton, "Delete Pages");
    LinkButton link(QStringLiteral("Show in Finder"));
    expectAccessible(&link, QAccessible::PushButton, "Show in Finder");
    NoteBanner note(QStringLiteral("Take care."), NoteBanner::Tone::Danger);
    expectAccessible(&note, QAccessible::StaticText, "Take care.");
    SectionHeader header(QStringLiteral("Files"));
    expectAccessible(&header, QAccessible::Heading, "Files");
    SegmentedPicker picker(QStringLiteral("Format"), {QStringLiteral("JPEG"), QStringLiteral("PNG")});
    expectAccessible(&picker, QAccessible::Grouping, "Format");
    auto* png = picker.findChildren<QRadioButton*>().last();
    expectAccessible(png, QAccessible::RadioButton, "PNG");
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(png)->state().checked);
    picker.setCurrent(1);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(png)->state().checked);
    Button tool(Button::Kind::Tool, QStringLiteral("Sign && Stamp"));
    tool.setIconOnly(true);
    expectAccessible(&tool, QAccessible::PushButton, "Sign & Stamp");
}

TEST(ScreenReader, PassesOverTheBrandMark)
{
    QWidget window;
    QHBoxLayout row(&window);
    auto* mark = new BrandMark(24);
    row.addWidget(mark);
    window.show();
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(mark)->state().invisible);
}

QRgb inkAt(QMenu& menu, QAction* action)
{
    const QImage image = picture(menu);
    const QRect place = menu.actionGeometry(action);
    QColor darkest = Qt::white;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x) {
            if (image.pixelColor(x, y).lightness() < darkest.lightness())
                darkest = image.pixelColor(x, y);
        }
    }
    return darkest.rgb();
}

TEST(MenuLook, WritesDestructiveItemsInDanger)
{
    QMenu menu;
    QAction* extract = menu.addAction(QStringLiteral("Extract…"));
    menu.addSeparator();
    QAction* removed = menu.addAction(QStringLiteral("Delete"));
    removed->setProperty("destructive", true);
    menu.popup(QPoint(40, 40));
    EXPECT_TRUE(alike(inkAt(menu, removed), theme::danger, 16));
    EXPECT_TRUE(alike(inkAt(menu, extract), theme::text, 16));
    removed->setEnabled(false);
    EXPECT_TRUE(alike(inkAt(menu, removed), theme::disabledText, 16));
}

} // namespace
} // namespace folvane
