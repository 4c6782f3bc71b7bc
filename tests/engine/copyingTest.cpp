#include "engine/BookFixture.h"
#include "engine/EngineTest.h"
#include "engine/outsideView.h"
#include "support/madePdf.h"
#include "support/tools.h"

#include <QJsonArray>

namespace folvane {

using CopyingTest = EngineTest;

TEST_F(CopyingTest, AWholeCopyKeepsAllThatHangsOnThePages)
{
    const QString copy = built(opened("a.pdf", book("A")), {0, 1, 2});
    const OutsideView view(copy);
    EXPECT_EQ(faultsOf(copy), QByteArray());
    EXPECT_EQ(view.links(), QStringList({"1>2", "1>3", "3>1"}));
    EXPECT_EQ(view.bookmarks(), QStringList({"One@1", " Two@2", "Three@3"}));
    EXPECT_EQ(view.fields(), QStringList({"name@1=A", "name@3=A", "signature@2="}));
    for (const char* kept :
         {"/StructTreeRoot", "/MarkInfo", "/OCProperties", "/OutputIntents", "/PageLabels", "/Names"})
        EXPECT_TRUE(view.catalogueKeys().contains(QLatin1String(kept))) << kept;
    EXPECT_TRUE(view.catalogue()["/Names"].toObject().contains(QLatin1String("/EmbeddedFiles")));
}

TEST_F(CopyingTest, WhatMustNotTravelStaysBehind)
{
    const QString copy = built(opened("a.pdf", book("A")), {0, 1, 2});
    const QByteArray plain = runTool("qpdf", {"--qdf", "--object-streams=disable", copy, "-"}).output;
    for (const char* left : {"/OpenAction", "/JavaScript", "/PieceInfo", "producer data", "/AA", "/ByteRange",
                             "/SigFlags", "A maker"})
        EXPECT_FALSE(plain.contains(left)) << left;
    EXPECT_TRUE(plain.contains("0 0 100 50 re f")) << "the look of the signature stays";
}

TEST_F(CopyingTest, TitleAndAuthorTravelFromOneSourceOnly)
{
    const QUrl a = opened("a.pdf", book("A"));
    const QUrl b = opened("b.pdf", book("B"));
    const OutsideView alone(built(a, {0}));
    const QJsonObject info = alone.resolved(alone.trailer()["/Info"]).toObject();
    EXPECT_EQ(info["/Title"].toString(), "u:The A");
    EXPECT_EQ(info.keys(), QStringList({"/Author", "/Title"}));

    BuildPlan merged;
    add(merged, a, {0});
    add(merged, b, {0});
    EXPECT_FALSE(OutsideView(built(merged)).trailer().contains(QLatin1String("/Info")));
}

struct SelectionCase {
    const char* name;
    std::vector<int> pages;
    QStringList links;
    QStringList bookmarks;
    QStringList fields;
};

class Selections : public EngineTest, public testing::WithParamInterface<SelectionCase> {};

TEST_P(Selections, KeepWhatLeadsToKeptPages)
{
    const SelectionCase& row = GetParam();
    const QString copy = built(opened("a.pdf", book("A")), row.pages);
    const OutsideView view(copy);
    EXPECT_EQ(faultsOf(copy), QByteArray());
    EXPECT_EQ(view.links(), row.links);
    EXPECT_EQ(view.bookmarks(), row.bookmarks);
    EXPECT_EQ(view.fields(), row.fields);
    EXPECT_EQ(view.pageObjects(), static_cast<int>(row.pages.size()));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Selections,
    testing::Values(
        SelectionCase{"Reversed",
                      {2, 1, 0},
                      {"1>3", "3>2", "3>1"},
                      {"One@3", " Two@2", "Three@1"},
                      {"name@1=A", "name@3=A", "signature@2="}},
        SelectionCase{"First", {0}, {}, {"One@1"}, {"name@1=A"}},
        SelectionCase{"HeadingStaysForWhatIsBelow", {1}, {}, {"One@?", " Two@1"}, {"signature@1="}},
        SelectionCase{"EverySecond", {0, 2}, {"1>2", "2>1"}, {"One@1", "Three@2"}, {"name@1=A", "name@2=A"}},
        // The second copy of a page is a page of its own: its field has another name, its link leads to the first.
        SelectionCase{"Twice", {0, 0}, {}, {"One@1"}, {"name+1@2=A", "name@1=A"}},
        SelectionCase{
            "AllTwice",
            {0, 1, 2, 0, 1, 2},
            {"1>2", "1>3", "3>1", "4>2", "4>3", "6>1"},
            {"One@1", " Two@2", "Three@3"},
            {"name+1@4=A", "name+1@6=A", "name@1=A", "name@3=A", "signature+1@5=", "signature@2="}}),
    [](const auto& row) { return std::string(row.param.name); });

struct MergeCase {
    const char* name;
    std::vector<std::vector<int>> documents;
    QStringList links;
    QStringList bookmarks;
    QStringList fields;
};

class MergedWithItself : public EngineTest, public testing::WithParamInterface<MergeCase> {};

TEST_P(MergedWithItself, EachCopyLeadsIntoItself)
{
    const MergeCase& row = GetParam();
    const QUrl source = opened("a.pdf", book("A"));
    BuildPlan plan;
    for (const std::vector<int>& pages : row.documents) {
        plan.documentStarts.insert(plan.pages.size());
        add(plan, source, pages);
    }
    const QString merged = built(plan);
    const OutsideView view(merged);
    EXPECT_EQ(faultsOf(merged), QByteArray());
    EXPECT_EQ(view.links(), row.links);
    EXPECT_EQ(view.bookmarks(), row.bookmarks);
    EXPECT_EQ(view.fields(), row.fields);
    EXPECT_EQ(view.pageObjects(), static_cast<int>(plan.pages.size()));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, MergedWithItself,
    testing::Values(
        MergeCase{"Whole",
                  {{0, 1, 2}, {0, 1, 2}},
                  {"1>2", "1>3", "3>1", "4>5", "4>6", "6>4"},
                  {"One@1", " Two@2", "Three@3", "One@4", " Two@5", "Three@6"},
                  {"name+1@4=A", "name+1@6=A", "name@1=A", "name@3=A", "signature+1@5=", "signature@2="}},
        MergeCase{"WithoutAPageInTheSecond",
                  {{0, 1, 2}, {0, 2}},
                  {"1>2", "1>3", "3>1", "4>5", "5>4"},
                  {"One@1", " Two@2", "Three@3", "One@4", "Three@5"},
                  {"name+1@4=A", "name+1@5=A", "name@1=A", "name@3=A", "signature@2="}},
        MergeCase{"WithoutAPageInTheFirst",
                  {{0, 1}, {2, 1, 0}},
                  {"1>2", "3>5", "5>4", "5>3"},
                  {"One@1", " Two@2", "One@5", " Two@4", "Three@3"},
                  {"name+1@3=A", "name+1@5=A", "name@1=A", "signature+1@4=", "signature@2="}},
        MergeCase{"APageTwiceInTheSecond",
                  {{0, 1, 2}, {0, 2, 0}},
                  {"1>2", "1>3", "3>1", "4>5", "5>4", "6>5"},
                  {"One@1", " Two@2", "Three@3", "One@4", "Three@5"},
                  {"name+1@4=A", "name+1@5=A", "name+2@6=A", "name@1=A", "name@3=A", "signature@2="}},
        MergeCase{"NothingInCommon",
                  {{0}, {1}, {2}},
                  {},
                  {"One@1", "One@?", " Two@2", "Three@3"},
                  {"name+1@3=A", "name@1=A", "signature@2="}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(CopyingTest, CopiesOfADocumentShareItsLayers)
{
    const QUrl source = opened("a.pdf", book("A"));
    BuildPlan plan;
    add(plan, source, {1, 0});
    add(plan, source, {0});
    plan.documentStarts = {0, 2};
    const QByteArray bytes = engine.build(plan);
    const OutsideView view(write("merged.pdf", bytes).toLocalFile());
    const QJsonObject layers = view.resolved(view.catalogue()["/OCProperties"]).toObject();
    EXPECT_EQ(layers["/OCGs"].toArray().size(), 1);
    const QUrl merged = opened("opened.pdf", bytes);
    for (const int page : {1, 2}) {
        const QImage drawn = engine.image({merged, page}, 0, 792)->image;
        EXPECT_EQ(QColor(drawn.pixel(125, 792 - 125)), QColor(Qt::white)) << page;
    }
}

TEST_F(CopyingTest, APlanWithoutPagesGivesAFileWithoutPages)
{
    EXPECT_EQ(faultsOf(built(BuildPlan{})), QByteArray());
}

TEST_F(CopyingTest, NothingOfALeftOutPageStaysInTheFile)
{
    const QString copy = built(opened("a.pdf", book("A")), {0});
    const QByteArray plain = runTool("qpdf", {"--qdf", "--object-streams=disable", copy, "-"}).output;
    for (const char* gone : {"secret2", "secret3", "only-on-3", "signature", "(Two)", "(Three)",
                             "attached words", "/StructTreeRoot", "/StructParents", "(end)"})
        EXPECT_FALSE(plain.contains(gone)) << gone;
    EXPECT_TRUE(plain.contains("/Hidden")) << "the layer of page 1 stays";
}

TEST_F(CopyingTest, HiddenLayersStayHidden)
{
    const QUrl source = opened("a.pdf", book("A"));
    for (const std::vector<int>& pages : {std::vector<int>{0}, std::vector<int>{0, 1, 2}}) {
        const QUrl copy = opened(QStringLiteral("copy%1.pdf").arg(pages.size()),
                                 engine.build({{page(source, 0)}, {}, {}, {}}));
        const QImage drawn = engine.image({copy, 0}, 0, 792)->image;
        EXPECT_EQ(QColor(drawn.pixel(125, 792 - 125)), QColor(Qt::white));
    }
}

TEST_F(CopyingTest, MergedBooksStayApart)
{
    BuildPlan plan;
    add(plan, opened("a.pdf", book("A")), {0, 1, 2});
    add(plan, opened("b.pdf", book("B")), {0, 1, 2});
    const QString merged = built(plan);
    const OutsideView view(merged);
    EXPECT_EQ(faultsOf(merged), QByteArray());
    EXPECT_EQ(view.links(), QStringList({"1>2", "1>3", "3>1", "4>5", "4>6", "6>4"}))
        << "each name leads into its own book";
    EXPECT_EQ(view.bookmarks(), QStringList({"One@1", " Two@2", "Three@3", "One@4", " Two@5", "Three@6"}));
    EXPECT_EQ(view.fields(), QStringList({"name+1@4=B", "name+1@6=B", "name@1=A", "name@3=A",
                                          "signature+1@5=", "signature@2="}));
    EXPECT_EQ(view.catalogue()["/OutputIntents"].toArray().size(), 1) << "the same condition once";
    EXPECT_FALSE(view.catalogueKeys().contains(QLatin1String("/StructTreeRoot")));
}

TEST_F(CopyingTest, PagesKeepTheirLabels)
{
    const auto labels = [](const QString& path) {
        QStringList lines;
        for (const QJsonValue& label : qpdfJson(path, "pagelabels").toArray()) {
            const QJsonObject entry = label.toObject()["label"].toObject();
            lines << QStringLiteral("%1:%2%3")
                         .arg(label.toObject()["index"].toInt())
                         .arg(entry["/S"].toString())
                         .arg(entry["/St"].toInt(1));
        }
        return lines;
    };
    const QUrl source = opened("a.pdf", book("A"));
    EXPECT_EQ(labels(built(source, {0, 1, 2})), QStringList({"0:/r1", "2:/D1"}));
    EXPECT_EQ(labels(built(source, {1, 2})), QStringList({"0:/r2", "1:/D1"}));
    EXPECT_EQ(labels(built(source, {2, 1, 0})), QStringList({"0:/D1", "1:/r2", "2:/r1"}));
}

TEST_F(CopyingTest, TheSourceIsTheSameForTheNextBuild)
{
    const QUrl source = opened("a.pdf", book("A"));
    const QString before = built(source, {0, 1, 2});
    built(source, {1});
    built(source, {0, 0}, 90);
    const QString after = built(source, {0, 1, 2});
    const QStringList asText{"--qdf", "--static-id", "--object-streams=disable"};
    EXPECT_EQ(runTool("qpdf", asText + QStringList{before, "-"}).output,
              runTool("qpdf", asText + QStringList{after, "-"}).output);
}

namespace {

/// Two pages; `catalogue` and the first page's entries are given, further objects are numbered from 5.
QByteArray twoPages(const QByteArray& catalogue, const QByteArray& firstPage,
                    const QList<QByteArray>& more = {})
{
    return pdfOfObjects(
        QList<QByteArray>{"<< /Type /Catalog /Pages 2 0 R " + catalogue + " >>",
                          "<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 /MediaBox [0 0 200 200] >>",
                          "<< /Type /Page /Parent 2 0 R " + firstPage + " >>",
                          "<< /Type /Page /Parent 2 0 R >>"}
        + more);
}

const QByteArray linkTo = "/Annots [<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /Dest ";

} // namespace

TEST_F(CopyingTest, PageNumbersAndDictionariesFollowThePage)
{
    EXPECT_EQ(OutsideView(built(opened("number.pdf", twoPages({}, linkTo + "[1 /Fit] >>]")), {1, 0})).links(),
              QStringList("2>1"));
    const QUrl named =
        opened("named.pdf",
               twoPages("/Names << /Dests << /Names [(x) << /D [1 /Fit] >>] >> >>", linkTo + "(x) >>]"));
    const OutsideView view(built(named, {1, 0}));
    const QJsonObject names = view.resolved(view.catalogue()["/Names"].toObject()["/Dests"]).toObject();
    const QString page =
        view.resolved(names["/Names"].toArray().at(1)).toObject()["/D"].toArray().at(0).toString();
    EXPECT_TRUE(view.resolved(page).toObject().contains(QLatin1String("/MediaBox"))) << "a page, no number";
}

TEST_F(CopyingTest, DeadTargetsDoNotComeToLifeInAnotherDocument)
{
    const QUrl dead = opened(
        "dead.pdf",
        twoPages({}, linkTo + "(end) >> << /Type /Annot /Subtype /Link /Rect [0 0 9 9] /Dest [3 /Fit] >>]"));
    BuildPlan plan;
    add(plan, dead, {0, 1});
    add(plan, opened("a.pdf", book("A")), {0, 1, 2});
    EXPECT_EQ(OutsideView(built(plan)).links(), QStringList({"1>?", "1>?", "3>4", "3>5", "5>3"}));
}

TEST_F(CopyingTest, AWidgetWithKidsOnALeftOutPageStays)
{
    const QUrl source = opened(
        "kids.pdf",
        twoPages("/AcroForm << /Fields [5 0 R] >>", "/Annots [5 0 R]",
                 {"<< /Type /Annot /Subtype /Widget /FT /Tx /T (a) /V (x) /Rect [0 0 9 9] /Kids [6 0 R] >>",
                  "<< /Type /Annot /Subtype /Widget /Parent 5 0 R /Rect [0 0 9 9] >>"}));
    const QByteArray plain =
        runTool("qpdf", {"--qdf", "--object-streams=disable", built(source, {0}), "-"}).output;
    EXPECT_EQ(plain.count("/Widget"), 1);
    EXPECT_TRUE(plain.contains("/T (a)"));
}

TEST_F(CopyingTest, AnAnswerToANoteOnALeftOutPageDoesNotBringTheNote)
{
    const QUrl source = opened(
        "notes.pdf",
        pdfOfObjects({"<< /Type /Catalog /Pages 2 0 R >>",
                      "<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 /MediaBox [0 0 200 200] >>",
                      "<< /Type /Page /Parent 2 0 R /Annots [5 0 R] >>",
                      "<< /Type /Page /Parent 2 0 R /Annots [6 0 R] >>",
                      "<< /Type /Annot /Subtype /Text /Rect [0 0 9 9] /Contents (question) >>",
                      "<< /Type /Annot /Subtype /Text /Rect [0 0 9 9] /Contents (answer) /IRT 5 0 R >>"}));
    const auto plain = [this](const BuildPlan& plan) {
        return runTool("qpdf", {"--qdf", "--object-streams=disable", built(plan), "-"}).output;
    };
    BuildPlan plan;
    add(plan, source, {1});
    const QByteArray alone = plain(plan);
    EXPECT_TRUE(alone.contains("(answer)"));
    EXPECT_FALSE(alone.contains("(question)"));
    add(plan, source, {1, 0});
    plan.documentStarts = {1};
    EXPECT_EQ(plain(plan).count("/IRT"), 1) << "in the copy that has the note";
}

TEST_F(CopyingTest, DamagedListsOfFieldsTakeNothingAway)
{
    const QUrl source =
        opened("font.pdf", twoPages("/AcroForm << /Fields [2 0 R 3 0 R 5 0 R] >>",
                                    "/Resources << /Font << /F1 5 0 R >> >> /Contents 6 0 R",
                                    {"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
                                     pdfStream({}, "BT /F1 9 Tf 9 9 Td (still here) Tj ET")}));
    for (const std::vector<int>& pages : {std::vector<int>{0}, std::vector<int>{0, 1}})
        EXPECT_TRUE(textOf(built(source, pages)).contains("still here"));
}

TEST_F(CopyingTest, DirectTreeNodesGiveTheirPagesAndAttributes)
{
    const QUrl source = opened(
        "direct.pdf",
        pdfOfObjects(
            {"<< /Type /Catalog /Pages 2 0 R >>",
             "<< /Type /Pages /Count 2 /Kids ["
             "<< /Type /Pages /Count 1 /MediaBox [0 0 100 50] /Kids [<< /Type /Page >>] >>"
             "<< /Type /Pages /Count 1 /MediaBox [0 0 50 100] /Rotate 90 /Kids [<< /Type /Page >>] >>] >>"}));
    EXPECT_EQ(engine.displaySize({source, 0}, 0), QSizeF(100, 50));
    EXPECT_EQ(engine.displaySize({source, 1}, 90), QSizeF(50, 100));
}

TEST_F(CopyingTest, StrangeNumbersAreSurvived)
{
    const QUrl source = opened(
        "strange.pdf", twoPages("/PageLabels << /Nums [0 << /S /D /St 9223372036854775807 >>] >>",
                                "/MediaBox [0 0 1" + QByteArray(400, '0') + ".5 9] /Rotate 99999999999"));
    EXPECT_EQ(faultsOf(built(source, {0, 1})), QByteArray());
    EXPECT_EQ(engine.displaySize({source, 0}, 0), QSizeF(612, 792));
    const QUrl header = opened("header.pdf", book("A").replace("%PDF-1.7", "%PDF-1.40000000000"));
    EXPECT_TRUE(textOf(built(header, {0})).contains("Page 1"));
}

} // namespace folvane
