#include "shell/WindowTest.h"

#include "shell/sidebar/FileRow.h"
#include "tools/merge/MergeList.h"
#include "tools/merge/MergeView.h"

#include <QAbstractButton>
#include <QAccessible>

namespace folvane {
namespace {

class Accessibility : public WindowTest {
protected:
    static QAccessibleInterface* cell(QWidget& list, int row)
    {
        return QAccessible::queryAccessibleInterface(&list)->tableInterface()->cellAt(row, 0);
    }
};

TEST_F(Accessibility, APageSaysItsNumberSelectionAndStamps)
{
    const OpenFilePtr file = openPages(3);
    clickPage(1);
    std::vector<PageItem> pages = file->pages.value();
    pages[2].stamps.emplace_back();
    file->pages = pages;
    EXPECT_EQ(cell(grid(), 0)->text(QAccessible::Name), "Page 1");
    EXPECT_FALSE(cell(grid(), 0)->state().selected);
    EXPECT_TRUE(cell(grid(), 1)->state().selected);
    EXPECT_EQ(cell(grid(), 1)->text(QAccessible::Description), QString());
    EXPECT_EQ(cell(grid(), 2)->text(QAccessible::Description), "Has signatures or stamps");
    EXPECT_TRUE(cell(grid(), 1)->rect().contains(pagePoint(1)));
}

TEST_F(Accessibility, FilesAreItemsOfLists)
{
    for (const char* name : {"one", "two"})
        model.merge.add(*openPages(2, name));
    EXPECT_EQ(cell(window.mergeView().list(), 1)->text(QAccessible::Name), "2. two, 2 pages");
    QAccessibleInterface* row = QAccessible::queryAccessibleInterface(window.findChildren<FileRow*>().last());
    EXPECT_EQ(row->text(QAccessible::Name), "two, 2 pages");
    EXPECT_TRUE(row->state().selected);
    QAccessibleInterface* list = row->parent();
    EXPECT_EQ(list->text(QAccessible::Name), "Files");
    EXPECT_TRUE(list->role() == QAccessible::List && row->role() == QAccessible::ListItem);
    EXPECT_FALSE(list->child(0)->state().selected);
    list->child(0)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(list->child(0)->state().selected);
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
