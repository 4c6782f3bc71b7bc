#include "pdf/salvage/Salvage.h"

#include "pdf/structure/qpdfInclude.h"
#include "support/madePdf.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

namespace folvane::pdf {
namespace {

constexpr int pageCount = 5;

// Page n is 100 + n points wide and says "Page n".
QByteArray pageNumbered(int n)
{
    return "<< /Type /Page /MediaBox [0 0 " + QByteArray::number(100 + n)
           + " 50] /Resources << /Font << /F << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >> >> >>";
}

enum class Storage { Plain, ObjectStreams };

struct Make {
    Storage storage = Storage::Plain;
    const char* password = "";
    bool isLocked = false;
    int pages = pageCount;
};

QByteArray written(QPDFWriter& writer)
{
    writer.setOutputMemory();
    writer.write();
    const auto buffer = writer.getBufferSharedPointer();
    return {reinterpret_cast<const char*>(buffer->getBuffer()), qsizetype(buffer->getSize())};
}

QByteArray document(const Make& make)
{
    const auto qpdf = QPDF::create();
    qpdf->emptyPDF();
    for (int n = 1; n <= make.pages; ++n) {
        auto page = qpdf->makeIndirectObject(QPDFObjectHandle::parse(pageNumbered(n).toStdString()));
        page.replaceKey("/Contents",
                        qpdf->newStream("BT /F 12 Tf 5 20 Td (Page " + std::to_string(n) + ") Tj ET"));
        qpdf->addPage(page, false);
    }
    QPDFWriter writer(*qpdf);
    writer.setObjectStreamMode(make.storage == Storage::Plain ? qpdf_o_disable : qpdf_o_generate);
    if (make.isLocked)
        writer.setR6EncryptionParameters(make.password, "owner", true, true, true, true, true, true,
                                         qpdf_r3p_full, true);
    return written(writer);
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

Widths salvagedWidths(const QByteArray& damaged, const char* password = "")
{
    const auto file = salvaged(damaged, {"", password});
    return file ? widthsOf(*file, password) : Widths();
}

const Widths allWidths = {101, 102, 103, 104, 105};

/// What another reader finds on the pages once qpdf has written them.
QByteArray textOf(const QByteArray& salvagedFile, const char* password)
{
    const auto qpdf = opened(salvagedFile, password);
    QPDFWriter writer(*qpdf);
    writer.setPreserveEncryption(false);
    const QByteArray bytes = written(writer);
    const QTemporaryDir folder;
    QFile file(folder.filePath("salvaged.pdf"));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        return {};
    QProcess reader;
    reader.start("pdftotext", {"-q", file.fileName(), "-"});
    reader.waitForFinished();
    return reader.readAllStandardOutput().simplified();
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

struct DamageCase {
    const char* name;
    std::function<QByteArray(QByteArray)> damage;
};

void PrintTo(const DamageCase& row, std::ostream* out)
{
    *out << row.name;
}

class SalvageOfDamage : public testing::TestWithParam<DamageCase> {};

TEST_P(SalvageOfDamage, KeepsEveryPage)
{
    const Make makes[] = {{Storage::Plain},
                          {Storage::ObjectStreams},
                          {Storage::Plain, "secret", true},
                          {Storage::ObjectStreams, "secret", true},
                          {Storage::ObjectStreams, "", true}};
    for (const Make& make : makes) {
        SCOPED_TRACE(testing::Message() << "object streams " << (make.storage == Storage::ObjectStreams)
                                        << ", locked " << make.isLocked << " by '" << make.password << "'");
        const auto file = salvaged(GetParam().damage(document(make)), {"", make.password});
        ASSERT_TRUE(file);
        EXPECT_EQ(widthsOf(*file, make.password), allWidths);
        EXPECT_EQ(textOf(*file, make.password), "Page 1 Page 2 Page 3 Page 4 Page 5");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SalvageOfDamage,
    testing::Values(
        DamageCase{"None", [](QByteArray file) { return file; }}, DamageCase{"WrongStart", wrongStart},
        DamageCase{"EndCutOff", [](QByteArray file) { return file.left(file.lastIndexOf("startxref") - 4); }},
        DamageCase{"GarbageBefore", [](QByteArray file) { return QByteArray(5000, 'x') + wrongStart(file); }},
        DamageCase{"NoHeader", [](QByteArray file) { return wrongStart(file).mid(9); }},
        DamageCase{"NoEndobj", [](QByteArray file) { return wrongStart(file).replace("endobj", ""); }},
        DamageCase{"NoEndstream", [](QByteArray file) { return wrongStart(file).replace("endstream", ""); }},
        DamageCase{"NoLengths",
                   [](QByteArray file) { return wrongStart(file).replace("/Length ", "/Lengxx "); }},
        DamageCase{"ShortLengths",
                   [](QByteArray file) { return wrongStart(file).replace("/Length ", "/Length 1 /Was "); }},
        DamageCase{
            "LostLengths",
            [](QByteArray file) { return wrongStart(file).replace("/Length ", "/Length 99 0 R /X "); }},
        DamageCase{"GluedObjects",
                   [](QByteArray file) { return wrongStart(file).replace("endobj\n", "endobj"); }},
        DamageCase{"WideHeaders",
                   [](QByteArray file) { return wrongStart(file).replace(" 0 obj", " \r\n  0 \t obj"); }}),
    [](const auto& row) { return std::string(row.param.name); });

class SalvageWithoutTrailer : public testing::TestWithParam<Storage> {};

TEST_P(SalvageWithoutTrailer, FindsTheCatalogue)
{
    const QByteArray file = withoutCrossReference(document({GetParam()}));
    EXPECT_FALSE(file.contains("trailer") || file.contains("/XRef"));
    EXPECT_EQ(salvagedWidths(file), allWidths);
}

TEST_P(SalvageWithoutTrailer, KeepsThePagesBeforeACut)
{
    const QByteArray file = document({GetParam(), "", false, 400});
    size_t before = 0;
    for (const int percent : {30, 60, 90}) {
        const Widths widths = salvagedWidths(file.left(file.size() * percent / 100));
        EXPECT_GE(widths.size(), before) << percent;
        EXPECT_TRUE(std::is_sorted(widths.begin(), widths.end())) << percent;
        before = widths.size();
    }
    EXPECT_GT(before, 100U);
}

INSTANTIATE_TEST_SUITE_P(Rows, SalvageWithoutTrailer, testing::Values(Storage::Plain, Storage::ObjectStreams),
                         [](const auto& row) {
                             return row.param == Storage::Plain ? "Plain" : "ObjectStreams";
                         });

TEST(Salvage, AnUnknownPasswordIsAskedFor)
{
    const QByteArray damaged = wrongStart(document({Storage::ObjectStreams, "secret", true}));
    const auto file = salvaged(damaged);
    ASSERT_TRUE(file);
    try {
        opened(*file, "wrong");
        FAIL() << "opened without the password";
    } catch (const QPDFExc& error) {
        EXPECT_EQ(error.getErrorCode(), qpdf_e_password);
    }
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

struct TreeCase {
    const char* name;
    QByteArray file; // without cross-reference; the width of a page is its number
    Widths widths;
};

void PrintTo(const TreeCase& row, std::ostream* out)
{
    *out << row.name;
}

class SalvageOfTrees : public testing::TestWithParam<TreeCase> {};

TEST_P(SalvageOfTrees, ShowsThePagesThatAreThere)
{
    EXPECT_EQ(salvagedWidths(GetParam().file), GetParam().widths);
}

const QByteArray twoPages = object(2, "<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 >>");
const QByteArray parent = "/Parent 2 0 R";

INSTANTIATE_TEST_SUITE_P(
    Rows, SalvageOfTrees,
    testing::Values(
        TreeCase{"Sound", catalogue + twoPages + page(4, parent) + page(3, parent), {3, 4}},
        TreeCase{"NoCatalogue", twoPages + page(4, parent) + page(3, parent), {3, 4}},
        TreeCase{"NoRoot", catalogue + page(4, parent) + page(3, parent), {4, 3}},
        TreeCase{"NeitherCatalogueNorRoot", page(4, parent) + page(3, parent), {4, 3}},
        TreeCase{"LoosePages", page(4, "") + page(3, ""), {4, 3}},
        TreeCase{"LostPage", catalogue + twoPages + page(4, parent), {4}},
        TreeCase{"WrongCount",
                 catalogue + object(2, "<< /Type /Pages /Kids [3 0 R] /Count 9 >>") + page(3, parent),
                 {3}},
        TreeCase{"LostNodeInTheMiddle",
                 catalogue + object(2, "<< /Type /Pages /Kids [3 0 R 7 0 R 4 0 R] /Count 4 >>")
                     + page(3, parent) + page(4, parent) + page(5, "/Parent 7 0 R")
                     + page(6, "/Parent 7 0 R"),
                 {3, 5, 6, 4}},
        TreeCase{"TwoLostLevels",
                 catalogue + object(2, "<< /Type /Pages /Kids [3 0 R 8 0 R] /Count 2 >>") + page(3, parent)
                     + page(5, "/Parent 7 0 R"),
                 {3, 5}},
        TreeCase{"RemovedPageStaysAway",
                 catalogue + twoPages + page(3, parent) + page(4, parent) + page(5, parent),
                 {3, 4}},
        TreeCase{"PageShownTwice",
                 catalogue + object(2, "<< /Type /Pages /Kids [3 0 R 3 0 R] /Count 2 >>") + page(3, parent),
                 {3, 3}},
        TreeCase{"Loop",
                 catalogue + object(2, "<< /Type /Pages /Kids [2 0 R 3 0 R] /Count 2 >>") + page(3, parent),
                 {3}},
        TreeCase{"RootWithAParent",
                 catalogue + object(2, "<< /Type /Pages /Kids [3 0 R] /Count 1 /Parent 2 0 R >>")
                     + page(3, parent),
                 {3}},
        TreeCase{"KidsElsewhere",
                 catalogue + object(2, "<< /Type /Pages /Kids 8 0 R /Count 2 >>") + object(8, "[3 0 R 9 0 R]")
                     + page(3, parent),
                 {3}},
        TreeCase{"KidsOfOtherTypes",
                 catalogue + object(2, "<< /Type /Pages /Kids [null 5 (x) 8 0 R 3 0 R] /Count 5 >>")
                     + object(8, "<< /Type /Font >>") + page(3, parent),
                 {3}},
        TreeCase{"LastDefinitionWins",
                 catalogue + twoPages + page(3, parent) + page(4, parent)
                     + object(2, "<< /Type /Pages /Kids [4 0 R] /Count 1 >>"),
                 {4}},
        TreeCase{"CutOffDefinitionDoesNot",
                 catalogue + twoPages + page(3, parent) + page(4, parent)
                     + "2 0 obj << /Type /Pages /Kids [4 0 R",
                 {3, 4}},
        TreeCase{"TrailerNamesTheCatalogue",
                 catalogue + twoPages + page(3, parent) + page(4, parent)
                     + object(8, "<< /Type /Catalog /Pages 9 0 R >>")
                     + object(9, "<< /Type /Pages /Kids [4 0 R] /Count 1 >>") + "trailer << /Root 1 0 R >>",
                 {3, 4}},
        TreeCase{"FileWithinTheFile",
                 catalogue + twoPages + page(3, parent) + page(4, parent)
                     + object(8, pdfStream("", twoPages + page(4, parent) + page(3, "/Rotate 90")
                                                   + object(8, "<< /Type /Catalog /Pages 3 0 R >>"))),
                 {3, 4}},
        TreeCase{"UnclosedString",
                 "7 0 obj (" + catalogue + "8 0 obj [ <" + twoPages + page(3, parent) + page(4, parent),
                 {3, 4}},
        TreeCase{"DeepNesting",
                 object(7, QByteArray("[").repeated(200000)) + object(8, QByteArray("<</A").repeated(200000))
                     + catalogue + twoPages + page(3, parent) + page(4, parent),
                 {3, 4}},
        TreeCase{"NumbersOutOfRange",
                 object(2147483647, "1")
                     + "0 0 obj 1 endobj 8388608 0 obj 1 endobj 99999999999999999999 0 obj 1 endobj "
                       "7 70000 obj 1 endobj 8 "
                     + QByteArray("0").repeated(30) + " obj 1 endobj\n" + catalogue + twoPages
                     + page(3, parent) + page(4, parent),
                 {3, 4}},
        TreeCase{"PageThatQpdfReadsAsNull", // a run of words without a meaning
                 catalogue + twoPages + page(3, "/A [a b c d e f g h] /B <xyz> /Parent 2 0 R")
                     + page(4, parent),
                 {3, 4}},
        TreeCase{"CatalogueThatQpdfReadsAsNull",
                 object(1, "<< /A [a b c d e f g h i] /Type /Catalog /Pages 2 0 R >>") + twoPages
                     + page(3, parent),
                 {3}},
        TreeCase{"NumberThatQpdfThrowsAt",
                 catalogue + twoPages + page(3, parent)
                     + page(4, "/Length 92233720368547758080 /Parent 2 0 R"),
                 {3}},
        TreeCase{"DamagedIdentity",
                 catalogue + twoPages + page(3, parent)
                     + "trailer << /Root 1 0 R /ID [<xyz> a b c d e f g h] >>",
                 {3}},
        TreeCase{"TrailerCutOff",
                 object(8, "<< /Pages 2 0 R >>") + twoPages + page(3, parent)
                     + "trailer << /Root 8 0 R /ID [<12",
                 {3}},
        TreeCase{"Nothing", "", {}}, TreeCase{"Garbage", QByteArray(100000, '\x9c'), {}},
        TreeCase{"OnlyAHeader", "%PDF-1.7\n", {}}, TreeCase{"CatalogueAlone", catalogue, {}},
        TreeCase{"NoPageSurvives", catalogue + twoPages, {}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Salvage, TheCatalogueKeepsItsOtherEntries)
{
    const auto file = salvaged(catalogue + page(3, "/Parent 7 0 R"));
    ASSERT_TRUE(file);
    const auto qpdf = opened(*file);
    EXPECT_EQ(qpdf->getRoot().getKey("/Lang").getUTF8Value(), "en");
}

TEST(Salvage, PagesStillInheritFromTheirNode)
{
    const auto file =
        salvaged(catalogue + object(2, "<< /Type /Pages /Kids [3 0 R 9 0 R] /MediaBox [0 0 77 9] >>")
                 + object(3, "<< /Type /Page /Parent 2 0 R >>"));
    ASSERT_TRUE(file);
    const auto qpdf = opened(*file);
    qpdf->pushInheritedAttributesToPage();
    QPDFObjectHandle first = qpdf->getAllPages().at(0);
    EXPECT_EQ(first.getKey("/MediaBox").getArrayItem(2).getIntValue(), 77);
}

// Each of these would be read from its start to the end of the file again and again by a careless search.
TEST(Salvage, HostileRepetitionIsReadOnce)
{
    const QByteArray sound = catalogue + twoPages + page(3, parent) + page(4, parent);
    for (const char* piece :
         {"7 0 obj (", "7 0 obj <", "7 0 obj [1 ", "7 0 obj << >> %", "7 0 obj << /Length 8 0 R >> stream ",
          "7 0 obj 1 (", "trailer << ", "7 0 obj << /Length 1 >> stream\r\n   "}) {
        const QByteArray hostile = sound + "\n" + QByteArray(piece).repeated(300'000);
        EXPECT_EQ(salvagedWidths(hostile), (Widths{3, 4})) << piece;
    }
}

} // namespace
} // namespace folvane::pdf
