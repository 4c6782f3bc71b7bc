// File kinds, sizes, order and lists of names.

#include "platform/files/fileKind.h"
#include "platform/texts/localeTexts.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace folvane {

namespace {

class InEnglish : public testing::Test {
protected:
    InEnglish() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }
    ~InEnglish() override { QLocale::setDefault(QLocale::c()); }
};

} // namespace

TEST(FileKinds, AreToldByTheExtension)
{
    for (const char* pdf : {"file:///a/x.pdf", "file:///a/x.PDF", "file:///a/.pdf"})
        EXPECT_EQ(fileKind(QUrl(pdf)), FileKind::Pdf) << pdf;
    for (const char* picture :
         {"file:///a/x.pdf.jpg", "file:///a/IMG_1.HEIC", "file:///a/v1.2 final.jpeg", "file:///a/no%231.png"})
        EXPECT_EQ(fileKind(QUrl(picture)), FileKind::Picture) << picture;
    for (const char* other : {"file:///a/pdf", "file:///a.pdf/x", "file:///a/x.pdf/", "file:///a/x.dat", "",
                              "file:///a/x.T%C4%B0F"}) // a Turkish capital i
        EXPECT_EQ(fileKind(QUrl(other)), FileKind::Other) << other;
}

TEST_F(InEnglish, SizesAreShownAsFilesAre)
{
    for (const auto& [bytes, want] :
         {std::pair(0LL, "0 bytes"), std::pair(1LL, "1 byte"), std::pair(999LL, "999 bytes"),
          std::pair(1'000LL, "1 KB"), std::pair(1'500LL, "2 KB"), std::pair(999'499LL, "999 KB"),
          std::pair(999'500LL, "1 MB"), std::pair(1'234'567LL, "1.2 MB"), std::pair(1'250'000LL, "1.3 MB"),
          std::pair(2'040'000LL, "2 MB"), std::pair(999'949'999LL, "999.9 MB"),
          std::pair(999'950'000LL, "1 GB"), std::pair(1'234'567'890LL, "1.23 GB"),
          std::pair(5'000'000'000'000LL, "5 TB"),
          std::pair(std::numeric_limits<long long>::max(), "9,223.37 PB")})
        EXPECT_EQ(byteCount(bytes), QString(want)) << bytes;
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ(byteCount(1'234'567), QString("1,2 MB"));
}

TEST_F(InEnglish, OrderIsThatOfPeople)
{
    const QCollator order = naturalOrder();
    for (const auto& [first, second] :
         {std::pair("2.png", "10.png"), std::pair("scan 9b", "scan 10a"),
          std::pair("99999999999999999998", "99999999999999999999"), std::pair("a1", "A2"),
          std::pair("a", "A"), std::pair("eclair", "éclair"), std::pair("éclair", "f"),
          std::pair("page", "page 1"), std::pair("", "1")}) {
        EXPECT_TRUE(order(QString(first), QString(second))) << first;
        EXPECT_FALSE(order(QString(second), QString(first))) << first;
    }
    EXPECT_FALSE(order(QString("a 1.png"), QString("a 1.png")));
}

TEST_F(InEnglish, NamesAreJoined)
{
    EXPECT_EQ(joinedNames({}), QString());
    EXPECT_EQ(joinedNames({"a"}), QString("a"));
    EXPECT_EQ(joinedNames({"a", "b"}), QString("a and b"));
    EXPECT_EQ(joinedNames({"a", "%1", "{0}"}), QString("a, %1, and {0}"));
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ(joinedNames({"a", "b", "c"}), QString("a, b und c"));
}

} // namespace folvane
