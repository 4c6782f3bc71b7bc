#include "tools/split/SplitChoice.h"

#include <gtest/gtest.h>

namespace folvane {

namespace {

using Mode = SplitChoice::Mode;
using Kind = SplitSummary::Kind;

} // namespace

TEST(SplitChoices, SayWhichFilesTheyMake)
{
    const QString typing = "Use page numbers from 1 to 10, like 1-3, 5.";
    for (const auto& [choice, count, want] : QList<std::tuple<SplitChoice, int, SplitSummary>>{
             {{Mode::Ranges, "8-10, 1-3"}, 10, {Kind::Files, "Makes 2 files: 8-10, 1-3"}},
             {{Mode::Ranges, "11"}, 10, {Kind::Invalid, typing}},
             {{Mode::Ranges, " , "}, 10, {Kind::Invalid, typing}},
             {{Mode::Ranges, " \t"}, 10, {}},
             {{Mode::Ranges, "1,2,3,4,5,6-7"}, 7, {Kind::Files, "Makes 6 files: 1, 2, 3, 4, 5, 6-7"}},
             {{Mode::Ranges, "1,2,3,4,5,6,7"}, 7, {Kind::Files, "Makes 7 files: 1, 2, 3, 4, 5, 6…"}},
             {{Mode::Every, "", 3}, 7, {Kind::Files, "Makes 3 files: 1-3, 4-6, 7"}},
             {{Mode::Every, "", 3}, 6, {Kind::Files, "Makes 2 files: 1-3, 4-6"}},
             {{Mode::Every, "", 2'000'000'000}, 7, {Kind::Files, "Makes 1 files: 1-7"}},
             {{Mode::Each, "nonsense", 9}, 3, {Kind::Files, "Makes 3 files: 1, 2, 3"}},
             {{Mode::Each, ""}, 1, {Kind::Files, "Makes 1 files: 1"}}}) {
        EXPECT_EQ(summary(choice, count), want) << choice.text.toStdString() << " of " << count;
        EXPECT_EQ(choice.ranges(count).has_value(), want.kind == Kind::Files);
    }
}

} // namespace folvane
