#include "shell/WindowTest.h"

#include "controls/sheets/Alert.h"
#include "shell/PasswordPrompt.h"
#include "shell/sidebar/FileRow.h"
#include "support/await.h"
#include "tools/merge/MergeList.h"
#include "tools/merge/MergeView.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>

namespace folvane {
namespace {

// What a person can act on or has to be told of; containers and decoration need no name.
const QSet<QAccessible::Role> named{
    QAccessible::Button,   QAccessible::CheckBox,   QAccessible::RadioButton, QAccessible::ComboBox,
    QAccessible::Slider,   QAccessible::SpinBox,    QAccessible::Link,        QAccessible::List,
    QAccessible::ListItem, QAccessible::Table,      QAccessible::Cell,        QAccessible::MenuItem,
    QAccessible::PageTab,  QAccessible::ButtonMenu, QAccessible::Dialog,      QAccessible::Window,
    QAccessible::Heading,  QAccessible::StaticText, QAccessible::EditableText};

/// Walks all that a screen reader would meet below `top`; gives what has no name though it needs one.
void walk(QAccessibleInterface* top, QStringList& unnamed, int& met)
{
    ++met;
    const bool isActive = !top->state().invisible && !top->state().offscreen;
    if (isActive && named.contains(top->role()) && top->text(QAccessible::Name).isEmpty())
        unnamed += top->object() ? top->object()->metaObject()->className() : "an item";
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

TEST_F(Accessibility, EachPlaceNamesAllItsParts)
{
    expectNames(&window, 25);
    openPages(4);
    expectNames(&window, 40);
    model.destination = Destination(Destination::Place::Merge);
    expectNames(&window.mergeView(), 6);
    await(model.addToMerge({makePdf("a.pdf", 2), makePdf("b.pdf", 1)}));
    QCoreApplication::processEvents();
    expectNames(&window.mergeView(), 9);
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&window.mergeView().list());
    EXPECT_EQ(list->role(), QAccessible::List);
    EXPECT_EQ(list->tableInterface()->cellAt(1, 0)->text(QAccessible::Name), "2. b, 1 pages");
}

TEST_F(Accessibility, SheetsAndQuestionsNameAllTheirControls)
{
    const OpenFilePtr file = openPages(3);
    for (const auto kind :
         {FileSheet::Kind::Password, FileSheet::Kind::ExportImages, FileSheet::Kind::Split}) {
        model.sheet = FileSheet{kind, file->id};
        expectNames(shown<QDialog>(), 7);
    }
    for (const char* mode : {"Every few pages", "Page by page"}) {
        hand.press(mode);
        expectNames(shown<QDialog>(), 7);
    }
    model.sheet = std::nullopt;
    model.errorMessage = "It broke.";
    expectNames(shown<Alert>(), 4);
    model.errorMessage = std::nullopt;
    model.closingFile = file;
    expectNames(shown<Alert>(), 6);
    model.closingFile = nullptr;
    QCoro::Task<> opening = model.open({makeLocked(folder.filePath("locked.pdf"), "secret")});
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
    EXPECT_EQ(cell(0)->text(QAccessible::Name), "Page 1");
    EXPECT_FALSE(cell(0)->state().selected);
    EXPECT_TRUE(cell(1)->state().selected);
    EXPECT_EQ(cell(1)->text(QAccessible::Description), QString());
    EXPECT_EQ(cell(2)->text(QAccessible::Description), "Has signatures or stamps");
    EXPECT_TRUE(cell(1)->rect().contains(pagePoint(1)));
}

TEST_F(Accessibility, TheKeyboardReachesEveryControlOfTheWindow)
{
    openPages(2);
    QSet<QWidget*> reached;
    for (int i = 0; i < 60; ++i) {
        hand.key(Qt::Key_Tab);
        reached.insert(window.focusWidget());
    }
    for (QAbstractButton* one : window.findChildren<QAbstractButton*>()) {
        const bool isInRow = qobject_cast<FileRow*>(one->parent()); // whose menu closes as well
        if (one->isVisible() && one->isEnabled() && !isInRow)
            EXPECT_TRUE(reached.contains(one)) << qPrintable(one->accessibleName() + one->text());
    }
    EXPECT_TRUE(reached.contains(&grid()));
}

} // namespace
} // namespace folvane
