#include "shell/ToolButtons.h"

#include "controls/Button.h"

#include <QWidget>

#include <gtest/gtest.h>

namespace folvane {
namespace {

TEST(ToolButtons, LoseTheirTitlesWhereTheyDoNotFitAndKeepTheirNames)
{
    QWidget bar;
    auto* outer = new QHBoxLayout(&bar);
    auto* tools = new ToolButtons(&bar);
    outer->addLayout(tools);
    const Button* split = tools->add(Icon::Scissors, QStringLiteral("Split"));
    tools->add(Icon::Lock, QStringLiteral("Password"));
    bar.show();
    const int withTitles = tools->sizeHint().width();

    tools->fitInto(withTitles);
    EXPECT_EQ(tools->sizeHint().width(), withTitles);
    tools->fitInto(withTitles - 1);
    outer->activate();
    EXPECT_LT(tools->sizeHint().width(), withTitles);
    EXPECT_EQ(split->text(), QStringLiteral("Split")) << "for screen readers";
    EXPECT_EQ(split->toolTip(), QStringLiteral("Split"));
    tools->fitInto(withTitles);
    outer->activate();
    EXPECT_EQ(tools->sizeHint().width(), withTitles) << "they come back with the room";
}

} // namespace
} // namespace folvane
