#include "documents/pages/PageRanges.h"

#include <gtest/gtest.h>

namespace folvane {

namespace {

/// "1-3 5", or "none" when the text is not valid for ten pages.
QString parsed(const QString& text)
{
    const std::optional<QList<PageRange>> ranges = PageRanges::parse(text, 10);
    if (!ranges)
        return QStringLiteral("none");
    QStringList names;
    for (const PageRange& range : *ranges)
        names << PageRanges::describe(range);
    return names.join(u' ');
}

} // namespace

TEST(PageRanges, ParseWhatPeopleType)
{
    for (const auto& [text, want] : QList<std::pair<QString, QString>>{{"1-3; 5", "1-3 5"},
                                                                       {"1–3, 5", "1-3 5"},
                                                                       {"1—3,5", "1-3 5"},
                                                                       {" 2\t- 4 ", "2-4"},
                                                                       {"2\u00A0-\u00A04", "2-4"},
                                                                       {"8-10, 1-3", "8-10 1-3"},
                                                                       {"1-3, 2-4", "1-3 2-4"},
                                                                       {"3,3", "3 3"},
                                                                       {",1,,; 2 ,", "1 2"},
                                                                       {"-5", "5"},
                                                                       {"5-", "5"},
                                                                       {"1--3", "1-3"},
                                                                       {"+3", "3"},
                                                                       {"007-0010", "7-10"},
                                                                       {"1-10", "1-10"}})
        EXPECT_EQ(parsed(text), want) << text.toStdString();
}

TEST(PageRanges, RefuseTheRest)
{
    // Arabic digits, 1 in 32 bits, 1 in 64 bits
    for (const QString& text :
         QStringList{"",    " \t",   ",",   " ; ",     "0", "11",         "9-11",
                     "5-3", "1-2-3", "a",   "1.5",     "-", "1- -3",      "+",
                     "++3", "1 0",   "3\n", "1, x, 3", "٣", "4294967297", "18446744073709551617"})
        EXPECT_EQ(parsed(text), "none") << text.toStdString();
}

TEST(PageRanges, DescribePages)
{
    EXPECT_EQ(PageRanges::describe(QList<int>()), "");
    EXPECT_EQ(PageRanges::describe({9, 1, 2, 3, 5, 8, 3}), "1-3, 5, 8-9") << "unsorted, with a twin";
    EXPECT_EQ(PageRanges::describe({7, 3, 5, 5}), "3, 5, 7");
}

} // namespace folvane
