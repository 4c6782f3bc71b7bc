#include "shell/WindowTest.h"

#include "controls/sheets/Alert.h"
#include "shell/PasswordPrompt.h"
#include "shell/sidebar/FileRow.h"
#include "support/await.h"
#include "tools/merge/MergeList.h"
#include "tools/merge/MergeView.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace folvane {
namespace {

// What a person can act on or has to be told of; containers and decoration need no name.
bool needsName(QAccessible::Role role)
{
    switch (role) {
    case QAccessible::Button:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::Slider:
    case QAccessible::SpinBox:
    case QAccessible::Link:
    case QAccessible::List:
    case QAccessible::ListItem:
    case QAccessible::Table:
    case QAccessible::Cell:
    case QAccessible::MenuItem:
    case QAccessible::ButtonMenu:
    case QAccessible::PageTab:
    case QAccessible::Dialog:
    case QAccessible::Window:
    case QAccessible::StaticText:
    case QAccessible::Heading: return true;
    default: return false;
    }
}

QString describe(QAccessibleInterface* thing)
{
    const QObject* object = thing->object();
    return QStringLiteral("%1, role %2, in %3")
        .arg(object ? object->metaObject()->className() : "no object")
        .arg(int(thing->role()))
        .arg(object && object->parent() ? object->parent()->metaObject()->className() : "nothing");
}

/// Walks all that a screen reader would meet below `top`; gives what has no name though it needs one.
void walk(QAccessibleInterface* top, QStringList& unnamed, int& met)
{
    ++met;
    const bool isActive = !top->state().invisible && !top->state().offscreen;
    if (isActive && needsName(top->role()) && top->text(QAccessible::Name).isEmpty())
        unnamed += describe(top);
    for (int i = 0; i < top->childCount(); ++i) {
        if (QAccessibleInterface* child = top->child(i);
            child && child->isValid() && !child->state().invisible)
            walk(child, unnamed, met);
    }
}

void expectNames(QWidget* view, int atLeast)
{
    QStringList unnamed;
    int met = 0;
    walk(QAccessible::queryAccessibleInterface(view), unnamed, met);
    EXPECT_EQ(unnamed, QStringList());
    EXPECT_GE(met, atLeast) << "the walk must have met the view's parts";
}

class Accessibility : public WindowTest {
protected:
    QAccessibleInterface* cell(int row)
    {
        return QAccessible::queryAccessibleInterface(&grid())->tableInterface()->cellAt(row, 0);
    }
};

TEST_F(Accessibility, HomeNamesAllItsControls)
{
    expectNames(&window, 25);
}

TEST_F(Accessibility, ADocumentNamesAllItsControlsAndPages)
{
    openPages(4);
    expectNames(&window, 40);
}

TEST_F(Accessibility, MergingNamesAllItsControlsAndRows)
{
    model.destination = Destination(Destination::Place::Merge);
    expectNames(&window.mergeView(), 6);
    await(model.addToMerge({makePdf(QStringLiteral("a.pdf"), 2), makePdf(QStringLiteral("b.pdf"), 1)}));
    QCoreApplication::processEvents();
    expectNames(&window.mergeView(), 9);
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&window.mergeView().list());
    EXPECT_EQ(list->role(), QAccessible::List);
    EXPECT_EQ(list->tableInterface()->cellAt(1, 0)->text(QAccessible::Name), QStringLiteral("2. b, 1 pages"));
}

TEST_F(Accessibility, SheetsNameAllTheirControls)
{
    const OpenFilePtr file = openPages(3);
    for (const auto kind :
         {FileSheet::Kind::Split, FileSheet::Kind::Password, FileSheet::Kind::ExportImages}) {
        model.sheet = FileSheet{kind, file->id};
        expectNames(shown<QDialog>(), 7);
    }
    model.sheet = FileSheet{FileSheet::Kind::Split, file->id};
    for (const char* mode : {"Every few pages", "Page by page"}) {
        press(shown<QDialog>(), QLatin1String(mode));
        expectNames(shown<QDialog>(), 7);
    }
    model.sheet = std::nullopt;
}

TEST_F(Accessibility, QuestionsNameAllTheirControls)
{
    const OpenFilePtr file = openPages(2);
    model.errorMessage = QStringLiteral("It broke.");
    expectNames(shown<Alert>(), 4);
    model.errorMessage = std::nullopt;
    model.closingFile = file;
    expectNames(shown<Alert>(), 6);
    model.closingFile = nullptr;
    QCoro::Task<> opening = model.open({makeLocked(QStringLiteral("locked.pdf"), QStringLiteral("secret"))});
    ASSERT_TRUE(waitFor([this] { return shown<PasswordPrompt>() != nullptr; }));
    expectNames(shown<PasswordPrompt>(), 5);
    model.answerPassword(std::nullopt);
    await(std::move(opening));
}

TEST_F(Accessibility, APageSaysItsNumberSelectionAndStamps)
{
    const OpenFilePtr file = openPages(3);
    clickPage(1);
    std::vector<PageItem> pages = file->pages.value();
    pages[2].stamps.emplace_back();
    file->pages = pages;
    EXPECT_EQ(cell(0)->text(QAccessible::Name), QStringLiteral("Page 1"));
    EXPECT_FALSE(cell(0)->state().selected);
    EXPECT_TRUE(cell(1)->state().selected);
    EXPECT_EQ(cell(1)->text(QAccessible::Description), QString());
    EXPECT_EQ(cell(2)->text(QAccessible::Description), QStringLiteral("Has signatures or stamps"));
    EXPECT_EQ(cell(1)->rect(),
              QRect(grid().viewport()->mapToGlobal(grid().visualRect(grid().model()->index(1, 0)).topLeft()),
                    grid().visualRect(grid().model()->index(1, 0)).size()));
}

struct TabOrder {
    const char* name;
    FileSheet::Kind kind;
    QStringList stops; ///< from where the keyboard is at first
};

class TabOrders : public Accessibility, public testing::WithParamInterface<TabOrder> {};

TEST_P(TabOrders, GoFromTopToBottom)
{
    const OpenFilePtr file = openPages(3);
    model.sheet = FileSheet{GetParam().kind, file->id};
    shown<QDialog>()->activateWindow();
    ASSERT_TRUE(waitFor([this] { return QApplication::activeWindow() == shown<QDialog>(); }));
    QStringList stops;
    for (int i = 0; i < GetParam().stops.size(); ++i) {
        QWidget* at = QApplication::focusWidget();
        stops += QAccessible::queryAccessibleInterface(at)->text(QAccessible::Name);
        QTest::keyClick(at, Qt::Key_Tab);
    }
    EXPECT_EQ(stops, GetParam().stops);
    model.sheet = std::nullopt;
}

using Kind = FileSheet::Kind;

INSTANTIATE_TEST_SUITE_P(
    Sheets, TabOrders,
    testing::Values(TabOrder{"Split", Kind::Split, {"By page ranges", "Cancel", "By page ranges"}},
                    TabOrder{
                        "Password", Kind::Password, {"Password", "Repeat password", "Cancel", "Password"}},
                    TabOrder{"Export", Kind::ExportImages, {"Export…", "PNG", "Good (200 dpi)", "Cancel"}}),
    [](const auto& order) { return std::string(order.param.name); });

TEST_F(Accessibility, TheKeyboardReachesEveryControlOfTheWindow)
{
    openPages(2);
    QSet<QWidget*> reached;
    grid().setFocus();
    for (int i = 0; i < 60; ++i) {
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        reached.insert(window.focusWidget());
    }
    for (QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        const bool isInRow = qobject_cast<FileRow*>(button->parent()); // whose menu closes as well
        if (button->isVisible() && button->isEnabled() && !isInRow)
            EXPECT_TRUE(reached.contains(button))
                << button->accessibleName().toStdString() << " " << button->text().toStdString();
    }
    EXPECT_TRUE(reached.contains(&grid()));
}

} // namespace
} // namespace folvane
