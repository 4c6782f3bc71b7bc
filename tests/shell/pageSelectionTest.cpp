#include "shell/pageGrid/pageSelection.h"

#include <QList>

#include <gtest/gtest.h>

namespace folvane {
namespace {

QUuid page(int number)
{
    return QUuid(uint(number), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
}

QSet<QUuid> pages(const QList<int>& numbers)
{
    QSet<QUuid> ids;
    for (const int number : numbers)
        ids.insert(page(number));
    return ids;
}

const QList<QUuid> order{page(1), page(2), page(3), page(4), page(5)};

struct ClickCase {
    const char* name;
    QList<int> selected;
    int anchor; ///< 0: none
    int clicked;
    Qt::KeyboardModifiers modifiers;
    QList<int> wanted;
    int wantedAnchor;
};

class Click : public testing::TestWithParam<ClickCase> {};

TEST_P(Click, SelectsAsTold)
{
    const ClickCase& row = GetParam();
    const std::optional<QUuid> anchor = row.anchor ? std::optional(page(row.anchor)) : std::nullopt;
    const PageSelection after =
        selectionAfterClick({pages(row.selected), anchor}, order, page(row.clicked), row.modifiers);
    EXPECT_EQ(after.pages, pages(row.wanted));
    EXPECT_EQ(after.anchor, page(row.wantedAnchor));
}

constexpr auto plain = Qt::NoModifier;
constexpr auto ctrl = Qt::ControlModifier;
constexpr auto shift = Qt::ShiftModifier;

INSTANTIATE_TEST_SUITE_P(
    Rows, Click,
    testing::Values(ClickCase{"PlainDropsTheOthers", {1, 2}, 1, 4, plain, {4}, 4},
                    ClickCase{"PlainOnASelectedPageLeavesItAlone", {1, 2}, 1, 2, plain, {2}, 2},
                    ClickCase{"CtrlAdds", {1}, 1, 4, ctrl, {1, 4}, 4},
                    ClickCase{"CtrlTakesAway", {1, 4}, 1, 4, ctrl, {1}, 4},
                    ClickCase{"CtrlWinsOverShift", {1}, 1, 4, ctrl | shift, {1, 4}, 4},
                    ClickCase{"ShiftForward", {2}, 2, 4, shift, {2, 3, 4}, 2},
                    ClickCase{"ShiftBackward", {4}, 4, 2, shift, {2, 3, 4}, 4},
                    ClickCase{"ShiftMeasuresAgainFromTheSamePage", {2, 3, 4}, 2, 1, shift, {1, 2}, 2},
                    ClickCase{"ShiftToTheLast", {4}, 4, 5, shift, {4, 5}, 4},
                    ClickCase{"ShiftOnTheAnchor", {3}, 3, 3, shift, {3}, 3},
                    ClickCase{"ShiftWithoutAnchor", {1}, 0, 4, shift, {4}, 4},
                    ClickCase{"ShiftFromAPageThatIsGone", {1}, 9, 4, shift, {4}, 4}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace folvane
