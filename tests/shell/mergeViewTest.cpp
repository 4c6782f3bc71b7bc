#include "shell/WindowTest.h"

#include "support/await.h"
#include "tools/merge/MergeList.h"
#include "tools/merge/MergeView.h"
#include "tools/merge/mergeRow.h"

#include <QAbstractButton>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>

namespace folvane {
namespace {

class MergeScreen : public WindowTest {
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        press(window.centralWidget(), QStringLiteral("Merge PDFs"));
        ASSERT_TRUE(view().isVisible());
    }

    MergeView& view() { return window.mergeView(); }
    MergeList& list() { return view().list(); }
    void add(const QStringList& names)
    {
        for (const QString& name : names)
            await(model.addToMerge({makePdf(name + QStringLiteral(".pdf"), 1)}));
        QCoreApplication::processEvents();
    }
    QString order() const
    {
        QString names;
        for (const MergeItem& item : model.merge.items.value())
            names += item.name;
        return names;
    }
    QRect rowRect(int row) { return list().visualRect(list().model()->index(row, 0)); }
    void dragRow(int row, const QPoint& to)
    {
        QWidget* viewport = list().viewport();
        const QPoint from = rowRect(row).center();
        QTest::mousePress(viewport, Qt::LeftButton, {}, from);
        QTest::mouseMove(viewport, from + (to - from) / 2);
        QTest::mouseMove(viewport, to);
    }
    void dropRow(const QPoint& at) { QTest::mouseRelease(list().viewport(), Qt::LeftButton, {}, at); }
    void keyOn(int row, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        list().setCurrentIndex(list().model()->index(row, 0));
        QTest::keyClick(&list(), key, modifiers);
    }
    QAbstractButton* button(const QString& text)
    {
        for (auto* one : view().findChildren<QAbstractButton*>())
            if (one->text() == text)
                return one;
        return nullptr;
    }
};

TEST_F(MergeScreen, DroppedFilesJoinAndOtherThingsDoNot)
{
    QMimeData files;
    files.setUrls({makePdf(QStringLiteral("a.pdf"), 2), makePdf(QStringLiteral("b.pdf"), 1)});
    EXPECT_TRUE(drop(&view(), view().rect().center(), files));
    ASSERT_TRUE(waitFor([this] { return order() == QStringLiteral("ab"); }));
    EXPECT_TRUE(model.files.value().isEmpty()) << "they are not opened";
    QMimeData text;
    text.setText(QStringLiteral("a page"));
    EXPECT_FALSE(drop(&view(), view().rect().center(), text));
}

TEST_F(MergeScreen, MergeNeedsTwoRowsAndNoOtherJob)
{
    add({QStringLiteral("a")});
    EXPECT_FALSE(button(QStringLiteral("Merge…"))->isEnabled());
    add({QStringLiteral("b")});
    EXPECT_TRUE(button(QStringLiteral("Merge…"))->isEnabled());
    model.busy = BusyState{QStringLiteral("Saving…"), {}};
    EXPECT_FALSE(button(QStringLiteral("Merge…"))->isEnabled());
    model.busy = std::nullopt;
    panels.saveAnswers.enqueue(QUrl::fromLocalFile(folder.filePath(QStringLiteral("out.pdf"))));
    press(&view(), QStringLiteral("Merge…"));
    ASSERT_TRUE(waitFor([this] { return model.toast.value().has_value(); }));
    EXPECT_EQ(model.toast.value()->text, QStringLiteral("Saved “out.pdf”"));
    press(&view(), QStringLiteral("Clear"));
    EXPECT_EQ(order(), QString());
    EXPECT_FALSE(list().isVisible());
}

struct RowDrag {
    const char* name;
    int row;
    double to; ///< where it is let go, in rows from the top of the first
    const char* want;
};

class RowDrags : public MergeScreen, public testing::WithParamInterface<RowDrag> {};

TEST_P(RowDrags, LandWhereTheyAreLetGo)
{
    add({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d")});
    const QPoint to(rowRect(0).center().x(), rowRect(0).top() + int(GetParam().to * mergeRowHeight));
    dragRow(GetParam().row, to);
    dropRow(to);
    EXPECT_EQ(order(), QString::fromLatin1(GetParam().want));
}

INSTANTIATE_TEST_SUITE_P(Rows, RowDrags,
                         testing::Values(RowDrag{"ToTheFront", 2, -0.4, "cabd"},
                                         RowDrag{"ALittleUp", 2, 2.1, "abcd"},
                                         RowDrag{"OverHalfARowUp", 2, 1.9, "acbd"},
                                         RowDrag{"OverHalfARowDown", 0, 1.1, "bacd"},
                                         RowDrag{"ToTheEnd", 0, 4.2, "bcda"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(MergeScreen, EscapeLeavesTheOrderAsItWas)
{
    add({QStringLiteral("a"), QStringLiteral("b")});
    const QPoint to = rowRect(1).center() + QPoint(0, 20);
    dragRow(0, to);
    QTest::keyClick(&list(), Qt::Key_Escape);
    dropRow(to);
    EXPECT_EQ(order(), QStringLiteral("ab"));
}

TEST_F(MergeScreen, ARowThatIsHeldAtTheEdgeScrollsTheList)
{
    QStringList names;
    for (char name = 'a'; name <= 't'; ++name)
        names += QString(QLatin1Char(name));
    add(names);
    list().verticalScrollBar()->setValue(0);
    const QPoint edge(rowRect(0).center().x(), list().viewport()->height() - 2);
    dragRow(0, edge);
    QScrollBar* bar = list().verticalScrollBar();
    ASSERT_TRUE(waitFor([bar] { return bar->value() == bar->maximum(); }));
    dropRow(edge);
    EXPECT_EQ(order(), QStringLiteral("bcdefghijklmnopqrsta"));
}

TEST_F(MergeScreen, KeysMoveAndRemove)
{
    add({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    keyOn(0, Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(order(), QStringLiteral("bac"));
    EXPECT_EQ(list().currentIndex().row(), 1) << "the keys go on with the row that was moved";
    QTest::keyClick(&list(), Qt::Key_Down, Qt::AltModifier);
    QTest::keyClick(&list(), Qt::Key_Down, Qt::AltModifier); // is the last
    EXPECT_EQ(order(), QStringLiteral("bca"));
    keyOn(0, Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(order(), QStringLiteral("bca"));
    keyOn(2, Qt::Key_Home, Qt::AltModifier);
    EXPECT_EQ(order(), QStringLiteral("abc"));
    QTest::keyClick(&list(), Qt::Key_End, Qt::AltModifier);
    EXPECT_EQ(order(), QStringLiteral("bca"));
    keyOn(2, Qt::Key_Delete);
    EXPECT_EQ(order(), QStringLiteral("bc"));
    EXPECT_EQ(list().currentIndex().row(), 1);
}

TEST_F(MergeScreen, TheButtonOfARowRemovesItWhenItIsLetGoThere)
{
    add({QStringLiteral("a"), QStringLiteral("b")});
    const QPoint remove = removeButtonOf(rowRect(0)).center();
    QTest::mousePress(list().viewport(), Qt::LeftButton, {}, remove);
    QTest::mouseRelease(list().viewport(), Qt::LeftButton, {}, rowRect(1).center());
    EXPECT_EQ(order(), QStringLiteral("ab"));
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, remove);
    EXPECT_EQ(order(), QStringLiteral("b"));
}

TEST_F(MergeScreen, OpenDocumentsJoinFromTheMenuAndTheSidebar)
{
    const OpenFilePtr file = openPages(3, QStringLiteral("A & B"));
    press(&window, QStringLiteral("More"));
    auto* more = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_TRUE(more);
    for (QAction* action : more->actions())
        if (action->text().remove(u'&') == QStringLiteral("Add to Merge"))
            action->trigger();
    more->close();
    EXPECT_TRUE(view().isVisible());
    press(&view(), QStringLiteral("Add"));
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    ASSERT_EQ(menu->actions().size(), 3);
    EXPECT_EQ(menu->actions().last()->text(), QStringLiteral("A && &B"));
    menu->actions().last()->trigger();
    menu->close();
    EXPECT_EQ(order(), QStringLiteral("A & BA & B"));
}

} // namespace
} // namespace folvane
