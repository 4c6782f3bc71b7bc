#include "shell/WindowTest.h"

#include "support/await.h"
#include "tools/merge/MergeList.h"
#include "tools/merge/MergeView.h"
#include "tools/merge/mergeRow.h"

#include <QScrollBar>

namespace folvane {
namespace {

class MergeScreen : public WindowTest {
protected:
    void SetUp() override { model.destination = Destination(Destination::Place::Merge); }

    MergeList& list() { return window.mergeView().list(); }
    /// One file of a page for each letter.
    void add(const QString& names)
    {
        for (const QChar name : names)
            await(model.addToMerge({makePdf(QString(name) + ".pdf", 1)}));
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
    void pull(int row, const QPoint& to)
    {
        const QPoint from = rowRect(row).center();
        QTest::mousePress(list().viewport(), Qt::LeftButton, {}, from);
        QTest::mouseMove(list().viewport(), from + (to - from) / 2);
        QTest::mouseMove(list().viewport(), to);
    }
    void letGo(const QPoint& at) { QTest::mouseRelease(list().viewport(), Qt::LeftButton, {}, at); }
};

TEST_F(MergeScreen, MergeNeedsTwoRowsAndNoOtherJob)
{
    add("a");
    EXPECT_FALSE(hand.finds("Merge…"));
    add("b");
    EXPECT_TRUE(hand.finds("Merge…"));
    model.busy = BusyState{"Saving…", {}};
    EXPECT_FALSE(hand.finds("Merge…"));
}

TEST_F(MergeScreen, DraggedRowsLandWhereTheyAreLetGo)
{
    struct Drag {
        const char* before;
        int row;
        double to; ///< where it is let go, in rows from the top of the first
    };
    add("abcd");
    const QPoint top(rowRect(0).center().x(), rowRect(0).top());
    for (const auto& [before, row, to] : {Drag{"abcd", 2, 2.1}, Drag{"abcd", 2, 1.9}, Drag{"acbd", 0, 1.1},
                                          Drag{"cabd", 2, -0.4}, Drag{"bcad", 0, 4.2}}) {
        EXPECT_EQ(order(), before);
        const QPoint place = top + QPoint(0, int(to * mergeRowHeight));
        pull(row, place);
        letGo(place);
    }
    EXPECT_EQ(order(), "cadb");
    pull(0, rowRect(2).center());
    QTest::keyClick(&list(), Qt::Key_Escape);
    letGo(rowRect(2).center());
    EXPECT_EQ(order(), "cadb") << "given up";
}

TEST_F(MergeScreen, ARowThatIsHeldAtTheEdgeScrollsTheList)
{
    add("abcdefghijklmnopqrst");
    QScrollBar& bar = *list().verticalScrollBar();
    bar.setValue(0);
    const QPoint edge(rowRect(0).center().x(), list().viewport()->height() - 2);
    pull(0, edge);
    ASSERT_TRUE(waitFor([&bar] { return bar.value() == bar.maximum(); }));
    letGo(edge);
    EXPECT_EQ(order(), "bcdefghijklmnopqrsta");
}

TEST_F(MergeScreen, KeysMoveAndRemove)
{
    add("abc");
    struct Step {
        int row; ///< on which the keys begin; -1: they go on
        Qt::Key key;
        const char* want;
    };
    for (const Step& step :
         {Step{0, Qt::Key_Down, "bac"}, Step{-1, Qt::Key_Down, "bca"}, Step{-1, Qt::Key_Down, "bca"},
          Step{0, Qt::Key_Up, "bca"}, Step{2, Qt::Key_Home, "abc"}, Step{-1, Qt::Key_End, "bca"},
          Step{1, Qt::Key_Up, "cba"}, Step{-1, Qt::Key_Right, "cba"}}) {
        if (step.row >= 0)
            list().setCurrentIndex(list().model()->index(step.row, 0));
        QTest::keyClick(&list(), step.key, Qt::AltModifier);
        EXPECT_EQ(order(), step.want);
    }
    list().setCurrentIndex(list().model()->index(2, 0));
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(order(), "cb");
    EXPECT_EQ(list().currentIndex().row(), 1);
}

TEST_F(MergeScreen, TheButtonOfARowRemovesItWhenItIsLetGoThere)
{
    add("ab");
    const QPoint remove = removeButtonOf(rowRect(0)).center();
    QTest::mousePress(list().viewport(), Qt::LeftButton, {}, remove);
    letGo(rowRect(1).center());
    EXPECT_EQ(order(), "ab");
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, remove);
    EXPECT_EQ(order(), "b");
}

} // namespace
} // namespace folvane
