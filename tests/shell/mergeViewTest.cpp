#include "shell/WindowTest.h"

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
};

TEST_F(MergeScreen, DraggedRowsLandWhereTheyAreLetGo)
{
    struct Drag {
        double row; ///< where it is taken hold of and let go, in rows from the top of the first
        double to;
        const char* want;
    };
    add("abcd");
    for (const auto& [row, to, want] :
         {Drag{2.5, 2.1, "abcd"}, Drag{2.5, 1.9, "acbd"}, Drag{0.5, 1.1, "cabd"}, Drag{2.5, -0.4, "bcad"},
          Drag{0.5, 4.2, "cadb"}}) {
        hand.pull(mergePoint(row), mergePoint(to));
        EXPECT_EQ(order(), want);
    }
    hand.pull(mergePoint(0.5), mergePoint(2.5), [this] { hand.key(Qt::Key_Escape); });
    EXPECT_EQ(order(), "cadb") << "given up";
}

TEST_F(MergeScreen, ARowThatIsHeldAtTheEdgeScrollsTheList)
{
    add("abcdefghijklmnopqrst");
    QScrollBar& bar = *list().verticalScrollBar();
    bar.setValue(0);
    const QPoint edge = list().viewport()->mapToGlobal(QPoint(20, list().viewport()->height() - 2));
    const auto isAtItsEnd = [&bar] { return bar.value() == bar.maximum(); };
    hand.pull(mergePoint(0.5), edge, [&] { EXPECT_TRUE(waitFor(isAtItsEnd)); });
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
            hand.click(mergePoint(step.row + 0.5));
        hand.key(step.key, Qt::AltModifier);
        EXPECT_EQ(order(), step.want);
    }
    hand.click(mergePoint(2.5));
    hand.key(Qt::Key_Delete);
    EXPECT_EQ(order(), "cb");
    EXPECT_EQ(list().currentIndex().row(), 1);
}

TEST_F(MergeScreen, TheButtonOfARowRemovesItWhenItIsLetGoThere)
{
    add("ab");
    const QRect row = list().visualRect(list().model()->index(0, 0));
    const QPoint remove = list().viewport()->mapToGlobal(removeButtonOf(row).center());
    hand.pull(remove, mergePoint(1.5));
    EXPECT_EQ(order(), "ab");
    hand.click(remove);
    EXPECT_EQ(order(), "b");
}

} // namespace
} // namespace folvane
