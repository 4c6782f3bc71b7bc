#include "pdf/copying/contentNames.h"
#include "pdf/copying/ResourcePruner.h"
#include "pdf/copying/defaultAppearance.h"
#include "support/madePdf.h"

#include <gmock/gmock.h>

namespace folvane::pdf {

struct NamesCase {
    const char* name;
    std::vector<std::string> contents; ///< one stream each
    std::vector<std::string> want;
};

class ContentNames : public testing::TestWithParam<NamesCase> {};

TEST_P(ContentNames, FindsWhatTheOperatorsName)
{
    QPDF qpdf;
    qpdf.emptyPDF();
    QPDFObjectHandle streams = QPDFObjectHandle::newArray();
    for (const std::string& content : GetParam().contents)
        streams.appendItem(qpdf.newStream(content));
    const std::optional<NameSet> names = contentNames(streams);
    ASSERT_TRUE(names);
    EXPECT_THAT(*names, testing::UnorderedElementsAreArray(GetParam().want));
}

const NamesCase namings[] = {{"Plain", {"/F1 12 Tf /Im0 Do"}, {"/F1", "/Im0"}},
                             {"WithoutSpaces", {"/F1 12 Tf[(a)]TJ/Im0 Do/GS0 gs"}, {"/F1", "/GS0", "/Im0"}},
                             {"Escaped", {"/A#20B Do /C# gs"}, {"/A B", "/C#"}},
                             {"EndOfAStreamEndsAName", {"/Im", "0 Do"}, {"/Im"}},
                             {"LastWord", {"/Fm1 Do/Fm2"}, {"/Fm1", "/Fm2"}},
                             {"NotInStrings", {"(a \\( (/X) \\) /Y) Tj/F Do"}, {"/F"}},
                             {"NotInComments", {"/A Do %/X (\r/B Do % /Y", "/C Do"}, {"/A", "/B", "/C"}},
                             {"InlineImagesOnlyAdd", {"BI /W 1 ID (%EI /F Do (/X) Tj"}, {"/F", "/W", "/X"}},
                             {"StringsWithoutEndOnlyAdd", {"(a /X", "/F Do"}, {"/F", "/X"}}};

INSTANTIATE_TEST_SUITE_P(Rows, ContentNames, testing::ValuesIn(namings),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ContentNamesOfDamage, AreUnknownRatherThanTooFew)
{
    QPDF qpdf;
    qpdf.emptyPDF();
    QPDFObjectHandle stream = qpdf.newStream();
    stream.replaceStreamData(std::string("no deflated data"), QPDFObjectHandle::newName("/FlateDecode"),
                             QPDFObjectHandle::newNull());
    EXPECT_FALSE(contentNames(stream));
    QPDFObjectHandle resources = QPDFObjectHandle::parse("<< /Font << /F1 << >> >> >>");
    EXPECT_TRUE(ResourcePruner().pruned(resources, stream).isSameObjectAs(resources));
}

struct PruningCase {
    const char* name;
    const char* resources;
    const char* contents;
    const char* want;
};

class Pruning : public testing::TestWithParam<PruningCase> {};

TEST_P(Pruning, LeavesOutWhatIsNotNamed)
{
    const QByteArray file =
        pdfOfObjects({"<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Kids [] /Count 0 >>",
                      GetParam().resources, pdfStream("/Subtype /Form", "/Inner Do"),
                      pdfStream("/Subtype /Form /Resources << /XObject << /Hidden 4 0 R >> >>", "/Hidden Do"),
                      pdfStream({}, "/Inner Do"), pdfStream({}, GetParam().contents)});
    QPDF qpdf;
    qpdf.processMemoryFile("resources", file.constData(), static_cast<size_t>(file.size()));
    QPDFObjectHandle pruned = ResourcePruner().pruned(qpdf.getObjectByID(3, 0), qpdf.getObjectByID(7, 0));
    std::string keys;
    for (auto& [category, entries] : pruned.getDictAsMap()) {
        for (const std::string& key : entries.getKeys())
            keys += category + key + " ";
    }
    EXPECT_EQ(keys, GetParam().want);
}

// 4 is a form that borrows /Inner, 5 a form with such a form, 6 a glyph that borrows it.
const PruningCase prunings[] = {
    {"Unused", "<< /Font << /F1 1 /F2 2 >> >>", "/F1 9 Tf", "/Font/F1 "},
    {"OfTwoKinds", "<< /Font << /A 1 >> /XObject << /A 1 /B 2 >> >>", "/B Do", "/XObject/B "},
    {"DefaultSpacesWorkUnnamed", "<< /ColorSpace << /DefaultRGB 1 /CS0 2 >> >>", "q",
     "/ColorSpace/DefaultRGB "},
    {"FormsThatBorrow", "<< /XObject << /Form 4 0 R /Inner 2 /Other 3 >> >>", "/Form Do",
     "/XObject/Form /XObject/Inner "},
    {"UnusedForms", "<< /XObject << /Form 4 0 R /Inner 2 /Other 3 >> >>", "/Other Do", "/XObject/Other "},
    {"FormsThatBorrowWithinOthers", "<< /XObject << /Outer 5 0 R /Form 4 0 R /Inner 2 /Other 3 >> >>",
     "/Outer Do", "/XObject/Inner /XObject/Outer "},
    {"MasksThatBorrow",
     "<< /ExtGState << /Mask << /SMask << /G 4 0 R >> >> >> /XObject << /Form 1 /Inner 2 /Other 3 >> >>",
     "/Mask gs", "/ExtGState/Mask /XObject/Inner "},
    {"GlyphsThatBorrow",
     "<< /Font << /T << /Subtype /Type3 /CharProcs << /a 6 0 R >> >> /Unused << >> >> "
     "/XObject << /Inner 1 /Other 2 >> >>",
     "/T 9 Tf", "/Font/T /XObject/Inner "}};

INSTANTIATE_TEST_SUITE_P(Rows, Pruning, testing::ValuesIn(prunings),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(DefaultAppearance, TakesNewFontNames)
{
    const std::map<std::string, std::string> newNames{{"/Helv", "/Helv+1"}};
    EXPECT_EQ(renamedFontsInAppearance("/Helv 12 Tf 0 g", newNames), "/Helv+1 12 Tf 0 g");
    EXPECT_EQ(renamedFontsInAppearance("0 g/Helv 0 Tf", newNames), "0 g/Helv+1 0 Tf");
    EXPECT_EQ(renamedFontsInAppearance("/HelvBold 1 Tf /Helv", newNames), "/HelvBold 1 Tf /Helv+1");
    EXPECT_EQ(renamedFontsInAppearance("", newNames), "");
}

} // namespace folvane::pdf
