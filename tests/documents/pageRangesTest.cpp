#include "documents/PageRanges.h"

#include <gtest/gtest.h>

namespace folvane {

namespace {

struct ParseCase {
    const char* name;
    QString text;
    std::optional<QList<PageRange>> want; // on ten pages
};

struct DescribeCase {
    const char* name;
    QList<int> pages;
    QString want;
};

const auto named = [](const auto& row) { return std::string(row.param.name); };

} // namespace

class Parse : public testing::TestWithParam<ParseCase> {};

TEST_P(Parse, GivesRanges)
{
    EXPECT_EQ(PageRanges::parse(GetParam().text, 10), GetParam().want);
}

const std::optional<QList<PageRange>> invalid;
const QList<PageRange> oneToThreeAndFive{{1, 3}, {5, 5}};

INSTANTIATE_TEST_SUITE_P(Rows, Parse,
                         testing::Values(ParseCase{"Semicolon", "1-3; 5", oneToThreeAndFive},
                                         ParseCase{"EnDash", "1–3, 5", oneToThreeAndFive},
                                         ParseCase{"EmDash", "1—3,5", oneToThreeAndFive},
                                         ParseCase{"BlanksAroundParts", " 2\t- 4 ", {{{2, 4}}}},
                                         ParseCase{"NoBreakSpace", "2\u00A0-\u00A04", {{{2, 4}}}},
                                         ParseCase{"OrderIsKept", "8-10, 1-3", {{{8, 10}, {1, 3}}}},
                                         ParseCase{"OverlapIsAllowed", "1-3, 2-4", {{{1, 3}, {2, 4}}}},
                                         ParseCase{"SameTwice", "3,3", {{{3, 3}, {3, 3}}}},
                                         ParseCase{"DoubledSeparators", ",1,,; 2 ,", {{{1, 1}, {2, 2}}}},
                                         ParseCase{"DashInFront", "-5", {{{5, 5}}}},
                                         ParseCase{"DashBehind", "5-", {{{5, 5}}}},
                                         ParseCase{"TwoDashes", "1--3", {{{1, 3}}}},
                                         ParseCase{"Plus", "+3", {{{3, 3}}}},
                                         ParseCase{"LeadingZeros", "007-0010", {{{7, 10}}}},
                                         ParseCase{"Ends", "1-10", {{{1, 10}}}}),
                         named);

INSTANTIATE_TEST_SUITE_P(
    Invalid, Parse,
    testing::Values(ParseCase{"Empty", "", invalid}, ParseCase{"Blank", " \t", invalid},
                    ParseCase{"LoneComma", ",", invalid}, ParseCase{"LoneSemicolon", " ; ", invalid},
                    ParseCase{"Zero", "0", invalid}, ParseCase{"Eleven", "11", invalid},
                    ParseCase{"BeyondTheEnd", "9-11", invalid}, ParseCase{"Reversed", "5-3", invalid},
                    ParseCase{"ThreeParts", "1-2-3", invalid}, ParseCase{"Letter", "a", invalid},
                    ParseCase{"Fraction", "1.5", invalid}, ParseCase{"DashAlone", "-", invalid},
                    ParseCase{"BlankBetweenDashes", "1- -3", invalid}, ParseCase{"PlusAlone", "+", invalid},
                    ParseCase{"TwoPluses", "++3", invalid}, ParseCase{"BlankInNumber", "1 0", invalid},
                    ParseCase{"LineEnd", "3\n", invalid}, ParseCase{"OneBadPieceOfMany", "1, x, 3", invalid},
                    ParseCase{"OtherDigits", "٣", invalid},
                    ParseCase{"Overflow32", "4294967297", invalid}, // 1 in 32 bits
                    ParseCase{"Overflow64", "18446744073709551617", invalid}),
    named);

class Describe : public testing::TestWithParam<DescribeCase> {};

TEST_P(Describe, GivesText)
{
    EXPECT_EQ(PageRanges::describe(GetParam().pages), GetParam().want);
}

INSTANTIATE_TEST_SUITE_P(Rows, Describe,
                         testing::Values(DescribeCase{"Nothing", {}, ""}, DescribeCase{"One", {7}, "7"},
                                         DescribeCase{"TwoAreARun", {4, 5}, "4-5"},
                                         DescribeCase{
                                             "UnsortedWithTwins", {9, 1, 2, 3, 5, 8, 3}, "1-3, 5, 8-9"},
                                         DescribeCase{"TwinsAlone", {2, 2}, "2"},
                                         DescribeCase{"EverySecond", {1, 3, 5}, "1, 3, 5"}),
                         named);

} // namespace folvane
