#include "shell/pageGrid/PageGridLayout.h"

#include <gtest/gtest.h>

namespace folvane {
namespace {

TEST(PageGridLayout, CellsNeitherOverlapNorLeaveTheirRoom)
{
    for (const int width : {0, 100, 198, 365, 366, 760, 1001, 1920, 5120}) {
        const PageGridLayout layout{23, width};
        const QRect room(0, 0, std::max(width, 198), layout.height()); // one column needs 150 and the edges
        for (int i = 0; i < layout.count; ++i) {
            EXPECT_TRUE(room.contains(layout.cell(i))) << "cell " << i << " of " << width;
            EXPECT_GE(layout.cell(i).width(), 150);
            EXPECT_LE(layout.cell(i).width(), 210);
            EXPECT_EQ(layout.at(layout.cell(i).center()), i);
            for (int j = 0; j < i; ++j)
                EXPECT_FALSE(layout.cell(i).intersects(layout.cell(j))) << i << " and " << j;
        }
    }
}

TEST(PageGridLayout, WhatIsOnScreenCoversEveryVisibleCellAndFewMore)
{
    const PageGridLayout layout{1000, 760};
    for (int top = 0; top < layout.height(); top += 97) {
        const auto [first, last] = layout.between(top, top + 500);
        for (int i = 0; i < layout.count; ++i) {
            const bool visible = layout.cell(i).bottom() >= top && layout.cell(i).top() < top + 500;
            EXPECT_TRUE(!visible || (i >= first && i < last)) << i << " at " << top;
        }
        EXPECT_LE(last - first, 4 * layout.columns());
    }
}

TEST(PageGridLayout, ADropLandsBeforeTheCellUnderIt)
{
    const PageGridLayout layout{7, 760};
    ASSERT_EQ(layout.columns(), 4);
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(layout.dropTarget(layout.cell(i).center()), i);
    EXPECT_EQ(layout.dropTarget(layout.cell(2).topLeft() - QPoint(5, 0)), 2) << "in the gap before a cell";
    EXPECT_EQ(layout.dropTarget(layout.cell(3).topRight() + QPoint(10, 5)), 4) << "behind the last of a row";
    EXPECT_EQ(layout.dropTarget(layout.cell(6).topRight() + QPoint(10, 5)), 7) << "behind the last of all";
    EXPECT_EQ(layout.dropTarget(QPoint(300, layout.height() + 400)), 7) << "far below";
    EXPECT_EQ(layout.dropTarget(QPoint(0, -50)), 0) << "above all";
}

} // namespace
} // namespace folvane
