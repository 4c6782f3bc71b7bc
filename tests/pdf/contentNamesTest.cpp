#include "pdf/copying/contentNames.h"
#include "pdf/copying/ResourcePruner.h"
#include "pdf/copying/defaultAppearance.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace folvane::pdf {

namespace {

std::vector<std::string> sortedNames(const NameSet& names)
{
    std::vector<std::string> sorted(names.begin(), names.end());
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

} // namespace

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
    EXPECT_EQ(sortedNames(*names), GetParam().want);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ContentNames,
    testing::Values(NamesCase{"Plain", {"/F1 12 Tf /Im0 Do"}, {"/F1", "/Im0"}},
                    NamesCase{"WithoutSpaces", {"/F1 12 Tf[(a)]TJ/Im0 Do/GS0 gs"}, {"/F1", "/GS0", "/Im0"}},
                    NamesCase{"Escaped", {"/A#20B Do /C# gs"}, {"/A B", "/C#"}},
                    NamesCase{"EndOfAStreamEndsAName", {"/Im", "0 Do"}, {"/Im"}},
                    NamesCase{"LastWord", {"/Fm1 Do/Fm2"}, {"/Fm1", "/Fm2"}},
                    NamesCase{"NotInStrings", {"(a \\( (/X) \\) /Y) Tj/F Do"}, {"/F"}},
                    NamesCase{"NotInComments", {"/A Do %/X (\r/B Do % /Y", "/C Do"}, {"/A", "/B", "/C"}},
                    NamesCase{"InlineImagesOnlyAdd", {"BI /W 1 ID (%EI /F Do (/X) Tj"}, {"/F", "/W", "/X"}},
                    NamesCase{"StringsWithoutEndOnlyAdd", {"(a /X", "/F Do"}, {"/F", "/X"}}),
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
    QPDF qpdf;
    qpdf.emptyPDF();
    QPDFObjectHandle borrowing = qpdf.newStream("/Inner Do");
    borrowing.getDict().replaceKey("/Subtype", QPDFObjectHandle::newName("/Form"));
    QPDFObjectHandle resources = QPDFObjectHandle::parse(GetParam().resources);
    const auto put = [&](const char* category, const char* name, QPDFObjectHandle resource) {
        QPDFObjectHandle entries = resources.getKey(category);
        if (entries.isDictionary() && entries.hasKey(name))
            entries.replaceKey(name, resource);
    };
    put("/XObject", "/Form", borrowing);
    QPDFObjectHandle outer = qpdf.newStream("/Hidden Do");
    outer.replaceDict(
        QPDFObjectHandle::parse("<< /Subtype /Form /Resources << /XObject << /Hidden 1 >> >> >>"));
    outer.getDict().getKey("/Resources").getKey("/XObject").replaceKey("/Hidden", borrowing);
    put("/XObject", "/Outer", outer);
    QPDFObjectHandle mask = QPDFObjectHandle::parse("<< /SMask << /G 1 >> >>");
    mask.getKey("/SMask").replaceKey("/G", borrowing);
    put("/ExtGState", "/Mask", mask);
    QPDFObjectHandle font = QPDFObjectHandle::parse("<< /Subtype /Type3 /CharProcs << /a 1 >> >>");
    font.getKey("/CharProcs").replaceKey("/a", qpdf.newStream("/Inner Do"));
    put("/Font", "/T", font);
    QPDFObjectHandle pruned =
        ResourcePruner().pruned(resources, qpdf.newStream(std::string(GetParam().contents)));
    std::string keys;
    for (auto& [category, entries] : pruned.getDictAsMap()) {
        for (const std::string& key : entries.getKeys())
            keys += category + key + " ";
    }
    EXPECT_EQ(keys, GetParam().want);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Pruning,
    testing::Values(PruningCase{"Unused", "<< /Font << /F1 1 /F2 2 >> >>", "/F1 9 Tf", "/Font/F1 "},
                    PruningCase{"OfTwoKinds", "<< /Font << /A 1 >> /XObject << /A 1 /B 2 >> >>", "/B Do",
                                "/XObject/B "},
                    PruningCase{"DefaultSpacesWorkUnnamed", "<< /ColorSpace << /DefaultRGB 1 /CS0 2 >> >>",
                                "q", "/ColorSpace/DefaultRGB "},
                    PruningCase{"FormsThatBorrow", "<< /XObject << /Form 1 /Inner 2 /Other 3 >> >>",
                                "/Form Do", "/XObject/Form /XObject/Inner "},
                    PruningCase{"UnusedForms", "<< /XObject << /Form 1 /Inner 2 /Other 3 >> >>", "/Other Do",
                                "/XObject/Other "},
                    PruningCase{"FormsThatBorrowWithinOthers",
                                "<< /XObject << /Outer << >> /Form 1 /Inner 2 /Other 3 >> >>", "/Outer Do",
                                "/XObject/Inner /XObject/Outer "},
                    PruningCase{"MasksThatBorrow",
                                "<< /ExtGState << /Mask << >> >> /XObject << /Form 1 /Inner 2 /Other 3 >> >>",
                                "/Mask gs", "/ExtGState/Mask /XObject/Inner "},
                    PruningCase{"GlyphsThatBorrow",
                                "<< /Font << /T << >> /Unused << >> >> /XObject << /Inner 1 /Other 2 >> >>",
                                "/T 9 Tf", "/Font/T /XObject/Inner "}),
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
