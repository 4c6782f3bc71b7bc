#include "pdf/salvage/Salvage.h"

#include "pdf/structure/qpdfInclude.h"
#include "support/madePdf.h"
#include "support/tools.h"

#include <QTemporaryFile>

#include <gmock/gmock.h>

namespace folvane::pdf {
namespace {

/// Page n of these is 100 + n points wide and says "Page n". `options` are qpdf's, which writes them.
QByteArray document(const QStringList& options, int count = 5)
{
    QList<MadePage> pages;
    for (int n = 1; n <= count; ++n)
        pages << MadePage{"BT /F1 12 Tf 5 20 Td (Page " + QByteArray::number(n) + ") Tj ET",
                          "/MediaBox [0 0 " + QByteArray::number(100 + n) + " 50]"};
    QTemporaryFile file;
    EXPECT_TRUE(file.open() && file.write(pdfOfPages(pages)) > 0 && file.flush());
    return runTool("qpdf", options + QStringList{file.fileName(), "-"}).output;
}

const QStringList plain{"--object-streams=disable"}, packed{"--object-streams=generate"};

// A wrong length must not lead to the end of a stream by chance, so nothing of where the bytes begin is left to it.
QStringList locked(const QString& password)
{
    return {"--static-aes-iv", "--encrypt", password, "owner", "256", "--"};
}

std::shared_ptr<QPDF> opened(const QByteArray& file, const char* password = "")
{
    auto qpdf = QPDF::create();
    qpdf->setSuppressWarnings(true);
    qpdf->processMemoryFile("salvaged", file.constData(), size_t(file.size()), password);
    return qpdf;
}

using Widths = std::vector<int>;

Widths widthsOf(const QByteArray& file, const char* password = "")
{
    const auto qpdf = opened(file, password);
    Widths widths;
    for (QPDFObjectHandle page : qpdf->getAllPages())
        widths.push_back(page.getKey("/MediaBox").getArrayItem(2).getIntValueAsInt());
    return widths;
}

Widths salvagedWidths(const QByteArray& damaged)
{
    const auto file = salvaged(damaged, {""});
    return file ? widthsOf(*file) : Widths();
}

const Widths allWidths = {101, 102, 103, 104, 105};

/// What another reader finds on the pages once qpdf has written them.
QString textOnPages(const QByteArray& salvagedFile, const QString& password)
{
    QTemporaryFile file;
    EXPECT_TRUE(file.open() && file.write(salvagedFile) == salvagedFile.size() && file.flush());
    runTool("qpdf", {"--decrypt", "--password=" + password, "--replace-input", file.fileName()});
    return textOf(file.fileName()).simplified();
}

QByteArray wrongStart(QByteArray file)
{
    return file.left(file.lastIndexOf("startxref")) + "startxref\n77777\n%%EOF\n";
}

QByteArray withoutCrossReference(QByteArray file)
{
    const qsizetype table = file.lastIndexOf("\nxref\n");
    return file.left(table >= 0 ? table : file.lastIndexOf(" 0 obj", file.lastIndexOf("/Type /XRef")) - 3);
}

/// Replaced in a file whose end leads nowhere.
struct Damage {
    const char* name;
    QByteArray from;
    QByteArray to;
};

class SalvageOfDamage : public testing::TestWithParam<Damage> {};

TEST_P(SalvageOfDamage, KeepsEveryPage)
{
    for (const auto& [options, password] :
         {std::pair(plain, ""), std::pair(packed, ""), std::pair(plain + locked("secret"), "secret"),
          std::pair(packed + locked("secret"), "secret"), std::pair(packed + locked(""), "")}) {
        SCOPED_TRACE(options.join(' ').toStdString());
        const QByteArray damaged = wrongStart(document(options)).replace(GetParam().from, GetParam().to);
        const auto file = salvaged(damaged, {"", password});
        ASSERT_TRUE(file);
        EXPECT_EQ(widthsOf(*file, password), allWidths);
        EXPECT_EQ(textOnPages(*file, password), "Page 1 Page 2 Page 3 Page 4 Page 5");
    }
}

const Damage damages[] = {{"WrongStart", "77777", "88888"},
                          {"EndCutOff", "\nstartxref\n77777\n%%EOF\n", ""},
                          {"GarbageBefore", "%PDF-", QByteArray(5000, 'x') + "%PDF-"},
                          {"NoHeader", "%PDF-", ""},
                          {"NoEndobj", "endobj", ""},
                          {"NoEndstream", "endstream", ""},
                          {"NoLengths", "/Length ", "/Lengxx "},
                          {"ShortLengths", "/Length ", "/Length 1 /Was "},
                          {"LostLengths", "/Length ", "/Length 99 0 R /X "},
                          {"GluedObjects", "endobj\n", "endobj"},
                          {"WideHeaders", " 0 obj", " \r\n  0 \t obj"}};

INSTANTIATE_TEST_SUITE_P(Rows, SalvageOfDamage, testing::ValuesIn(damages),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Salvage, WithoutATrailerTheCatalogueIsFound)
{
    for (const QStringList& options : {plain, packed}) {
        const QByteArray file = withoutCrossReference(document(options));
        EXPECT_FALSE(file.contains("trailer") || file.contains("/XRef"));
        EXPECT_EQ(salvagedWidths(file), allWidths);
    }
}

TEST(Salvage, PagesBeforeACutAreKept)
{
    for (const QStringList& options : {plain, packed}) {
        const QByteArray file = document(options, 400);
        size_t before = 0;
        for (const int percent : {30, 60, 90}) {
            const Widths widths = salvagedWidths(file.left(file.size() * percent / 100));
            EXPECT_GE(widths.size(), before) << percent;
            EXPECT_TRUE(std::is_sorted(widths.begin(), widths.end())) << percent;
            before = widths.size();
        }
        EXPECT_GT(before, 100U);
    }
}

TEST(Salvage, AnUnknownPasswordIsAskedFor)
{
    const auto file = salvaged(wrongStart(document(packed + locked("secret"))));
    ASSERT_TRUE(file);
    EXPECT_THAT([&] { opened(*file, "wrong"); },
                testing::Throws<QPDFExc>(testing::Property(&QPDFExc::getErrorCode, qpdf_e_password)));
}

QByteArray object(int number, const QByteArray& value)
{
    return QByteArray::number(number) + " 0 obj\n" + value + "\nendobj\n";
}

QByteArray page(int number, const QByteArray& entries)
{
    return object(number,
                  "<< /Type /Page " + entries + " /MediaBox [0 0 " + QByteArray::number(number) + " 9] >>");
}

const QByteArray catalogue = object(1, "<< /Type /Catalog /Pages 2 0 R /Lang (en) >>");
const QByteArray parent = "/Parent 2 0 R";
const QByteArray three = page(3, parent), four = page(4, parent);

QByteArray pages(int number, const QByteArray& kids, const QByteArray& more = {})
{
    return object(number, "<< /Type /Pages /Kids [" + kids + "] /Count 9 " + more + " >>");
}

const QByteArray twoPages = pages(2, "3 0 R 4 0 R"), sound = catalogue + twoPages + three + four;

struct TreeCase {
    const char* name;
    QByteArray file; // without cross-reference; the width of a page is its number
    Widths widths = {3, 4};
};

class SalvageOfTrees : public testing::TestWithParam<TreeCase> {};

TEST_P(SalvageOfTrees, ShowsThePagesThatAreThere)
{
    EXPECT_EQ(salvagedWidths(GetParam().file), GetParam().widths);
}

const TreeCase trees[] = {
    {"Sound", catalogue + twoPages + four + three},
    {"NoCatalogue", twoPages + four + three},
    {"NoRoot", catalogue + four + three, {4, 3}},
    {"LoosePages", page(4, "") + page(3, ""), {4, 3}},
    {"LostPage", catalogue + twoPages + four, {4}},
    {"WrongCount", catalogue + pages(2, "3 0 R") + three, {3}},
    {"LostNodeInTheMiddle",
     catalogue + pages(2, "3 0 R 7 0 R 4 0 R") + three + four + page(5, "/Parent 7 0 R")
         + page(6, "/Parent 7 0 R"),
     {3, 5, 6, 4}},
    {"TwoLostLevels", catalogue + pages(2, "3 0 R 8 0 R") + three + page(5, "/Parent 7 0 R"), {3, 5}},
    {"RemovedPageStaysAway", sound + page(5, parent)},
    {"PageShownTwice", catalogue + pages(2, "3 0 R 3 0 R") + three, {3, 3}},
    {"Loop", catalogue + pages(2, "2 0 R 3 0 R") + three, {3}},
    {"RootWithAParent", catalogue + pages(2, "3 0 R", parent) + three, {3}},
    {"KidsElsewhere",
     catalogue + object(2, "<< /Type /Pages /Kids 8 0 R /Count 2 >>") + object(8, "[3 0 R 9 0 R]") + three,
     {3}},
    {"KidsOfOtherTypes",
     catalogue + pages(2, "null 5 (x) 8 0 R 3 0 R") + object(8, "<< /Type /Font >>") + three,
     {3}},
    {"LastDefinitionWins", sound + pages(2, "4 0 R"), {4}},
    {"CutOffDefinitionDoesNot", sound + "2 0 obj << /Type /Pages /Kids [4 0 R"},
    {"TrailerNamesTheCatalogue", sound + object(8, "<< /Type /Catalog /Pages 9 0 R >>") + pages(9, "4 0 R")
                                     + "trailer << /Root 1 0 R >>"},
    {"FileWithinTheFile",
     sound
         + object(8, pdfStream("", twoPages + four + page(3, "/Rotate 90")
                                       + object(8, "<< /Type /Catalog /Pages 3 0 R >>")))},
    {"UnclosedString", "7 0 obj (" + catalogue + "8 0 obj [ <" + twoPages + three + four},
    {"DeepNesting",
     object(7, QByteArray("[").repeated(200000)) + object(8, QByteArray("<</A").repeated(200000)) + sound},
    {"NumbersOutOfRange", object(2147483647, "1")
                              + "0 0 obj 1 endobj 8388608 0 obj 1 endobj 99999999999999999999 0 obj 1 endobj "
                                "7 70000 obj 1 endobj 8 "
                              + QByteArray("0").repeated(30) + " obj 1 endobj\n" + sound},
    {"PageThatQpdfReadsAsNull", // a run of words without a meaning
     catalogue + twoPages + page(3, "/A [a b c d e f g h] /B <xyz> /Parent 2 0 R") + four},
    {"CatalogueThatQpdfReadsAsNull",
     object(1, "<< /A [a b c d e f g h i] /Type /Catalog /Pages 2 0 R >>") + twoPages + three,
     {3}},
    {"NumberThatQpdfThrowsAt",
     catalogue + twoPages + three + page(4, "/Length 92233720368547758080 /Parent 2 0 R"),
     {3}},
    {"DamagedIdentity",
     catalogue + twoPages + three + "trailer << /Root 1 0 R /ID [<xyz> a b c d e f g h] >>",
     {3}},
    {"TrailerCutOff",
     object(8, "<< /Pages 2 0 R >>") + twoPages + three + "trailer << /Root 8 0 R /ID [<12",
     {3}},
    {"Nothing", "", {}},
    {"Garbage", QByteArray(100000, '\x9c'), {}},
    {"NoPageSurvives", catalogue + twoPages, {}}};

INSTANTIATE_TEST_SUITE_P(Rows, SalvageOfTrees, testing::ValuesIn(trees),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Salvage, TheCatalogueAndTheTreeKeepTheirOtherEntries)
{
    const auto file = salvaged(catalogue + pages(2, "3 0 R 9 0 R", "/MediaBox [0 0 77 9]")
                               + object(3, "<< /Type /Page /Parent 2 0 R >>"));
    ASSERT_TRUE(file);
    const auto qpdf = opened(*file);
    EXPECT_EQ(qpdf->getRoot().getKey("/Lang").getUTF8Value(), "en");
    qpdf->pushInheritedAttributesToPage();
    QPDFObjectHandle first = qpdf->getAllPages().at(0);
    EXPECT_EQ(first.getKey("/MediaBox").getArrayItem(2).getIntValue(), 77);
}

// Each of these would be read from its start to the end of the file again and again by a careless search.
TEST(Salvage, HostileRepetitionIsReadOnce)
{
    for (const char* piece :
         {"7 0 obj (", "7 0 obj <", "7 0 obj [1 ", "7 0 obj << >> %", "7 0 obj << /Length 8 0 R >> stream ",
          "7 0 obj 1 (", "trailer << ", "7 0 obj << /Length 1 >> stream\r\n   "}) {
        const QByteArray hostile = sound + "\n" + QByteArray(piece).repeated(300'000);
        EXPECT_EQ(salvagedWidths(hostile), (Widths{3, 4})) << piece;
    }
}

} // namespace
} // namespace folvane::pdf
