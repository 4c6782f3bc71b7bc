#include "tools/split/SplitChoice.h"

#include <gtest/gtest.h>

namespace folvane {

namespace {

using Mode = SplitChoice::Mode;

QString written(const std::optional<QList<PageRange>>& ranges)
{
    if (!ranges)
        return QStringLiteral("none");
    QStringList names;
    for (const PageRange& range : *ranges)
        names << rangeName(range);
    return names.join(u' ');
}

struct SplitCase {
    const char* name;
    SplitChoice choice;
    int count;
    const char* ranges;
    const char* summary;
    SplitSummary::Kind kind = SplitSummary::Kind::Files;
};

class Splitting : public testing::TestWithParam<SplitCase> {};

TEST_P(Splitting, MakesTheseFilesAndSaysSo)
{
    const SplitCase& row = GetParam();
    EXPECT_EQ(written(row.choice.ranges(row.count)), row.ranges);
    EXPECT_EQ(summary(row.choice, row.count), (SplitSummary{row.kind, QString::fromUtf8(row.summary)}));
}

constexpr auto invalid = SplitSummary::Kind::Invalid;
constexpr auto nothing = SplitSummary::Kind::Nothing;

INSTANTIATE_TEST_SUITE_P(
    Rows, Splitting,
    testing::Values(
        SplitCase{"Typed", {Mode::Ranges, "8-10, 1-3", 2}, 10, "8-10 1-3", "Makes 2 files: 8-10, 1-3"},
        SplitCase{"TheSameTwice", {Mode::Ranges, "3,3", 2}, 5, "3 3", "Makes 2 files: 3, 3"},
        SplitCase{"OutOfBounds",
                  {Mode::Ranges, "11", 2},
                  10,
                  "none",
                  "Use page numbers from 1 to 10, like 1-3, 5.",
                  invalid},
        SplitCase{"OnlyAComma",
                  {Mode::Ranges, " , ", 2},
                  4,
                  "none",
                  "Use page numbers from 1 to 4, like 1-3, 5.",
                  invalid},
        SplitCase{"Empty", {Mode::Ranges, "", 2}, 10, "none", "", nothing},
        SplitCase{"Blank", {Mode::Ranges, " \t", 2}, 10, "none", "", nothing},
        SplitCase{"SixAreNamed",
                  {Mode::Ranges, "1,2,3,4,5,6-7", 2},
                  7,
                  "1 2 3 4 5 6-7",
                  "Makes 6 files: 1, 2, 3, 4, 5, 6-7"},
        SplitCase{"TheSeventhIsNot",
                  {Mode::Ranges, "1,2,3,4,5,6,7", 2},
                  7,
                  "1 2 3 4 5 6 7",
                  "Makes 7 files: 1, 2, 3, 4, 5, 6…"},
        SplitCase{
            "TheLastTakesWhatIsLeft", {Mode::Every, "", 3}, 7, "1-3 4-6 7", "Makes 3 files: 1-3, 4-6, 7"},
        SplitCase{"Even", {Mode::Every, "", 3}, 6, "1-3 4-6", "Makes 2 files: 1-3, 4-6"},
        SplitCase{"MoreThanThereAre", {Mode::Every, "", 2'000'000'000}, 7, "1-7", "Makes 1 files: 1-7"},
        SplitCase{"EachPage", {Mode::Each, "nonsense", 9}, 3, "1 2 3", "Makes 3 files: 1, 2, 3"},
        SplitCase{"OnePage", {Mode::Each, "", 2}, 1, "1", "Makes 1 files: 1"}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace

} // namespace folvane
