// File kinds, sizes, order and lists of names.

#include "platform/files/fileKind.h"
#include "platform/texts/localeTexts.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <algorithm>

namespace folvane {

namespace {

std::string named(const char* name)
{
    return name;
}

class InEnglish : public testing::Test {
protected:
    InEnglish() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }
    ~InEnglish() override { QLocale::setDefault(QLocale::c()); }
};

struct KindCase {
    const char* name;
    const char* url;
    FileKind want;
};
class Kinds : public testing::TestWithParam<KindCase> {};

struct SizeCase {
    const char* name;
    qint64 bytes;
    const char* want;
};
class Sizes : public InEnglish, public testing::WithParamInterface<SizeCase> {};

struct OrderCase {
    const char* name;
    const char* first;
    const char* second;
};
class Order : public InEnglish, public testing::WithParamInterface<OrderCase> {};

} // namespace

TEST_P(Kinds, AreToldByTheExtension)
{
    EXPECT_EQ(fileKind(QUrl(GetParam().url)), GetParam().want);
}

INSTANTIATE_TEST_SUITE_P(Rows, Kinds,
                         testing::Values(KindCase{"Pdf", "file:///a/x.pdf", FileKind::Pdf},
                                         KindCase{"UpperCase", "file:///a/x.PDF", FileKind::Pdf},
                                         KindCase{"LastOfTwo", "file:///a/x.pdf.jpg", FileKind::Picture},
                                         KindCase{"PhonePhoto", "file:///a/IMG_1.HEIC", FileKind::Picture},
                                         KindCase{"DotInName", "file:///a/v1.2 final.jpeg",
                                                  FileKind::Picture},
                                         KindCase{"HashInName", "file:///a/no%231.png", FileKind::Picture},
                                         KindCase{"NoExtension", "file:///a/pdf", FileKind::Other},
                                         KindCase{"OnlyAnExtension", "file:///a/.pdf", FileKind::Pdf},
                                         KindCase{"FolderHasIt", "file:///a.pdf/x", FileKind::Other},
                                         KindCase{"Folder", "file:///a/x.pdf/", FileKind::Other},
                                         KindCase{"TurkishI", "file:///a/x.T%C4%B0F", FileKind::Other},
                                         KindCase{"Unknown", "file:///a/x.dat", FileKind::Other},
                                         KindCase{"Nothing", "", FileKind::Other}),
                         [](const auto& row) { return named(row.param.name); });

TEST_P(Sizes, AreShownAsFilesAre)
{
    EXPECT_EQ(byteCount(GetParam().bytes), QString(GetParam().want));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Sizes,
    testing::Values(
        SizeCase{"Zero", 0, "0 bytes"}, SizeCase{"One", 1, "1 byte"}, SizeCase{"Bytes", 999, "999 bytes"},
        SizeCase{"FirstKilobyte", 1'000, "1 KB"}, SizeCase{"HalfUp", 1'500, "2 KB"},
        SizeCase{"BelowHalf", 12'499, "12 KB"}, SizeCase{"LastKilobyte", 999'499, "999 KB"},
        SizeCase{"RollsOver", 999'500, "1 MB"}, SizeCase{"AllNines", 999'999, "1 MB"},
        SizeCase{"OneDecimal", 1'234'567, "1.2 MB"}, SizeCase{"HalfOfADecimal", 1'250'000, "1.3 MB"},
        SizeCase{"NoTrailingZero", 2'040'000, "2 MB"}, SizeCase{"LastMegabyte", 999'949'999, "999.9 MB"},
        SizeCase{"RollsOverToGiga", 999'950'000, "1 GB"}, SizeCase{"TwoDecimals", 1'234'567'890, "1.23 GB"},
        SizeCase{"OneTrailingZero", 1'200'000'000, "1.2 GB"}, SizeCase{"Tera", 5'000'000'000'000, "5 TB"},
        SizeCase{"Largest", std::numeric_limits<qint64>::max(), "9,223.37 PB"}),
    [](const auto& row) { return named(row.param.name); });

TEST_F(InEnglish, SizesFollowTheLocale)
{
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ(byteCount(1'234'567), QString("1,2 MB"));
}

TEST_P(Order, IsThatOfPeople)
{
    const auto [name, first, second] = GetParam();
    EXPECT_LT(naturalCompare(first, second), 0);
    EXPECT_GT(naturalCompare(second, first), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Order,
    testing::Values(OrderCase{"NumbersByValue", "2.png", "10.png"},
                    OrderCase{"InTheMiddle", "scan 9b", "scan 10a"},
                    OrderCase{"LongNumbers", "99999999999999999998", "99999999999999999999"},
                    OrderCase{"CaseDecidesLast", "a1", "A2"}, OrderCase{"CaseDecides", "a", "A"},
                    OrderCase{"Accents", "eclair", "éclair"},
                    OrderCase{"AccentsBeforeNextLetter", "éclair", "f"},
                    OrderCase{"Prefix", "page", "page 1"}, OrderCase{"Empty", "", "1"}),
    [](const auto& row) { return named(row.param.name); });

TEST_F(InEnglish, EqualNamesAreEqual)
{
    EXPECT_EQ(naturalCompare("a 1.png", "a 1.png"), 0);
}

TEST_F(InEnglish, NamesAreJoined)
{
    EXPECT_EQ(joinedNames({}), QString());
    EXPECT_EQ(joinedNames({"a"}), QString("a"));
    EXPECT_EQ(joinedNames({"a", "b"}), QString("a and b"));
    EXPECT_EQ(joinedNames({"a", "b", "{0}"}), QString("a, b, and {0}"));
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ(joinedNames({"a", "b", "c"}), QString("a, b und c"));
}

} // namespace folvane
