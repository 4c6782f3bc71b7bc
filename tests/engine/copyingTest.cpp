#include "engine/BookFixture.h"
#include "engine/EngineTest.h"
#include "support/madePdf.h"
#include "support/tools.h"

#include <QColor>
#include <QImage>
#include <QJsonArray>

namespace folvane {

struct CopyCase {
    const char* name;
    std::vector<std::vector<int>> documents; ///< pages of the book, each list a document of its own
    QStringList links;
    QStringList bookmarks;
    QStringList fields;
};

class Copies : public EngineTest, public testing::WithParamInterface<CopyCase> {};

TEST_P(Copies, KeepWhatLeadsToTheirPages)
{
    const CopyCase& row = GetParam();
    const QUrl source = opened("a.pdf", book("A"));
    BuildPlan plan;
    for (const std::vector<int>& pages : row.documents) {
        plan.documentStarts.insert(plan.pages.size());
        add(plan, source, pages);
    }
    const QString copy = built(plan);
    EXPECT_EQ(faultsOf(copy), QByteArray());
    EXPECT_EQ(outsideView(copy)["link"], row.links);
    EXPECT_EQ(outsideView(copy)["bookmark"], row.bookmarks);
    EXPECT_EQ(outsideView(copy)["field"], row.fields);
    EXPECT_EQ(plainText(copy).count("/Type /Page\n"), qsizetype(plan.pages.size()));
}

const QStringList twiceInFields{"name+1@4=A", "name+1@6=A",     "name@1=A",
                                "name@3=A",   "signature+1@5=", "signature@2="};

const CopyCase copies[] = {
    {"Whole",
     {{0, 1, 2}},
     {"1>2", "1>3", "3>1"},
     {"One@1", " Two@2", "Three@3"},
     {"name@1=A", "name@3=A", "signature@2="}},
    {"First", {{0}}, {}, {"One@1"}, {"name@1=A"}},
    {"HeadingStaysForWhatIsBelow", {{1}}, {}, {"One@?", " Two@1"}, {"signature@1="}},
    {"EverySecond", {{0, 2}}, {"1>2", "2>1"}, {"One@1", "Three@2"}, {"name@1=A", "name@2=A"}},
    // The second copy of a page is a page of its own: its field has another name, its link leads to the first.
    {"AllTwice",
     {{0, 1, 2, 0, 1, 2}},
     {"1>2", "1>3", "3>1", "4>2", "4>3", "6>1"},
     {"One@1", " Two@2", "Three@3"},
     twiceInFields},
    // Merged with itself, each copy leads into itself.
    {"WholeWithItself",
     {{0, 1, 2}, {0, 1, 2}},
     {"1>2", "1>3", "3>1", "4>5", "4>6", "6>4"},
     {"One@1", " Two@2", "Three@3", "One@4", " Two@5", "Three@6"},
     twiceInFields},
    {"WithoutAPageInTheFirst",
     {{0, 1}, {2, 1, 0}},
     {"1>2", "3>5", "5>4", "5>3"},
     {"One@1", " Two@2", "One@5", " Two@4", "Three@3"},
     {"name+1@3=A", "name+1@5=A", "name@1=A", "signature+1@4=", "signature@2="}},
    {"APageTwiceInTheSecond",
     {{0, 1, 2}, {0, 2, 0}},
     {"1>2", "1>3", "3>1", "4>5", "5>4", "6>5"},
     {"One@1", " Two@2", "Three@3", "One@4", "Three@5"},
     {"name+1@4=A", "name+1@5=A", "name+2@6=A", "name@1=A", "name@3=A", "signature@2="}},
    {"NoPages", {}, {}, {}, {}}};

INSTANTIATE_TEST_SUITE_P(Rows, Copies, testing::ValuesIn(copies),
                         [](const auto& row) { return std::string(row.param.name); });

using CopyingTest = EngineTest;

TEST_F(CopyingTest, AWholeCopyKeepsTheDocumentAndLeavesBehindWhatMustNotTravel)
{
    const QByteArray whole = plainText(built(opened("a.pdf", book("A")), {0, 1, 2}));
    for (const char* kept :
         {"/StructTreeRoot", "/StructParents", "/MarkInfo", "/OCProperties", "/OutputIntents",
          "/EmbeddedFiles", "(end)", "0 0 100 50 re f"}) // the look of the signature
        EXPECT_TRUE(whole.contains(kept)) << kept;
    for (const char* left : {"/OpenAction", "/JavaScript", "/PieceInfo", "producer data", "/AA", "/ByteRange",
                             "/SigFlags", "A maker"})
        EXPECT_FALSE(whole.contains(left)) << left;
}

TEST_F(CopyingTest, NothingOfALeftOutPageStaysInTheFile)
{
    const QByteArray first = plainText(built(opened("a.pdf", book("A")), {0}));
    for (const char* gone : {"secret2", "secret3", "only-on-3", "signature", "(Two)", "(Three)",
                             "attached words", "/StructTreeRoot", "/StructParents", "(end)"})
        EXPECT_FALSE(first.contains(gone)) << gone;
    for (const char* kept : {"/Hidden", "/Title (The A)", "/Author (Somebody)"})
        EXPECT_TRUE(first.contains(kept)) << kept;
}

TEST_F(CopyingTest, LayersAreSharedByCopiesAndStayHidden)
{
    const QUrl source = opened("a.pdf", book("A"));
    BuildPlan plan;
    add(plan, source, {1, 0});
    add(plan, source, {0});
    plan.documentStarts = {0, 2};
    const QString merged = built(plan);
    EXPECT_EQ(plainText(merged).count("/Type /OCG"), 1);
    const QUrl copy = QUrl::fromLocalFile(merged);
    engine.open(copy);
    for (const int page : {1, 2})
        EXPECT_EQ(QColor(drawn(copy, page, 800).pixel(125, 800 - 125)), QColor(Qt::white)) << page;
}

TEST_F(CopyingTest, MergedBooksStayApart)
{
    BuildPlan plan;
    add(plan, opened("a.pdf", book("A")), {0, 1, 2});
    add(plan, opened("b.pdf", book("B")), {0, 1, 2});
    const QString merged = built(plan);
    EXPECT_EQ(faultsOf(merged), QByteArray());
    EXPECT_EQ(outsideView(merged)["link"], QStringList({"1>2", "1>3", "3>1", "4>5", "4>6", "6>4"}))
        << "each name leads into its own book";
    EXPECT_EQ(outsideView(merged)["field"], QStringList({"name+1@4=B", "name+1@6=B", "name@1=A", "name@3=A",
                                                         "signature+1@5=", "signature@2="}));
    const QByteArray plain = plainText(merged);
    EXPECT_EQ(plain.count("/Type /OutputIntent"), 1) << "the same condition once";
    for (const char* left : {"/StructTreeRoot", "/Info", "/Title (The"})
        EXPECT_FALSE(plain.contains(left)) << left;
}

TEST_F(CopyingTest, PagesKeepTheirLabels)
{
    const QUrl source = opened("a.pdf", book("A"));
    for (const auto& [pages, labels] :
         {std::pair(std::vector<int>{0, 1, 2}, "0 << /S /r >> 2 << /S /D >>"),
          std::pair(std::vector<int>{1, 2}, "0 << /S /r /St 2 >> 1 << /S /D >>"),
          std::pair(std::vector<int>{2, 1, 0}, "0 << /S /D >> 1 << /S /r /St 2 >> 2 << /S /r >>")})
        EXPECT_TRUE(
            plainText(built(source, pages)).simplified().contains(QByteArray("/Nums [ ") + labels + " ]"))
            << labels;
}

TEST_F(CopyingTest, TheSourceIsTheSameForTheNextBuild)
{
    const QUrl source = opened("a.pdf", book("A"));
    const auto whole = [&] {
        const QByteArray plain = plainText(built(source, {0, 1, 2}));
        return plain.left(plain.lastIndexOf("/ID [")); // which is made of the time
    };
    const QByteArray before = whole();
    built(source, {1});
    built(source, {0, 0}, 90);
    EXPECT_EQ(before, whole());
}

namespace {

/// Two pages; `catalogue` and the first page's entries are given, `more` begins with object 7.
QByteArray twoPages(const QByteArray& catalogue, const QByteArray& firstPage,
                    const QList<QByteArray>& more = {}, const QByteArray& secondPage = {})
{
    return pdfOfPages({{shownText("still here"), firstPage}, {{}, secondPage}}, catalogue, more);
}

QByteArray linkTo(const QByteArray& destination)
{
    return "<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /Dest " + destination + " >>";
}

} // namespace

TEST_F(CopyingTest, PageNumbersAndDictionariesFollowThePage)
{
    const auto linksOfTurned = [this](const QString& name, const QByteArray& file) {
        return outsideView(built(opened(name, file), {1, 0}))["link"];
    };
    EXPECT_EQ(linksOfTurned("number.pdf", twoPages({}, "/Annots [" + linkTo("[1 /Fit]") + "]")),
              QStringList("2>1"));
    EXPECT_EQ(linksOfTurned("named.pdf", twoPages("/Names << /Dests << /Names [(x) << /D [1 /Fit] >>] >> >>",
                                                  "/Annots [" + linkTo("(x)") + "]")),
              QStringList("2>1"));
}

TEST_F(CopyingTest, DeadTargetsDoNotComeToLifeInAnotherDocument)
{
    const QUrl dead =
        opened("dead.pdf", twoPages({}, "/Annots [" + linkTo("(end)") + linkTo("[3 /Fit]") + "]"));
    BuildPlan plan;
    add(plan, dead, {0, 1});
    add(plan, opened("a.pdf", book("A")), {0, 1, 2});
    EXPECT_EQ(outsideView(built(plan))["link"], QStringList({"1>1", "3>4", "3>5", "5>3"}))
        << "what leads to no page MuPDF takes for the first";
}

// More than one leaf of a tree holds, in names that no other encoding of text keeps: bytes are what links go by.
TEST_F(CopyingTest, NamesKeepTheirBytesHoweverMany)
{
    QByteArray names;
    for (int i = 0; i < 300; ++i)
        names += "<ff" + QByteArray::number(1000 + i) + "fe> [4 0 R /Fit] ";
    const QByteArray longest = "<" + QByteArray("e9").repeated(70'000) + "ff>";
    const QByteArray tree = "/Names << /Dests << /Names [" + longest + " [4 0 R /Fit] " + names + "] >> >>";
    const QByteArray links =
        "/Annots [" + linkTo("<ff1000fe>") + linkTo("<ff1299fe>") + linkTo(longest) + "]";
    const QUrl source = opened("names.pdf", twoPages(tree, links));
    EXPECT_EQ(outsideView(built(source, {0, 1}))["link"], QStringList({"1>2", "1>2", "1>2"}));
}

TEST_F(CopyingTest, AWidgetWithKidsOnALeftOutPageStays)
{
    const QUrl source = opened(
        "kids.pdf",
        twoPages("/AcroForm << /Fields [7 0 R] >>", "/Annots [7 0 R]",
                 {"<< /Type /Annot /Subtype /Widget /FT /Tx /T (a) /V (x) /Rect [0 0 9 9] /Kids [8 0 R] >>",
                  "<< /Type /Annot /Subtype /Widget /Parent 7 0 R /Rect [0 0 9 9] >>"}));
    const QByteArray plain = plainText(built(source, {0}));
    EXPECT_EQ(plain.count("/Widget"), 1);
    EXPECT_TRUE(plain.contains("/T (a)"));
}

TEST_F(CopyingTest, AnAnswerToANoteOnALeftOutPageDoesNotBringTheNote)
{
    const QUrl source =
        opened("notes.pdf",
               twoPages({}, "/Annots [7 0 R]",
                        {"<< /Type /Annot /Subtype /Text /Rect [0 0 9 9] /Contents (question) >>",
                         "<< /Type /Annot /Subtype /Text /Rect [0 0 9 9] /Contents (answer) /IRT 7 0 R >>"},
                        "/Annots [8 0 R]"));
    BuildPlan plan;
    add(plan, source, {1});
    const QByteArray alone = plainText(built(plan));
    EXPECT_TRUE(alone.contains("(answer)"));
    EXPECT_FALSE(alone.contains("(question)"));
    add(plan, source, {1, 0});
    plan.documentStarts = {1};
    EXPECT_EQ(plainText(built(plan)).count("/IRT"), 1) << "in the copy that has the note";
}

TEST_F(CopyingTest, DamagedListsOfFieldsTakeNothingAway)
{
    const QUrl source =
        opened("font.pdf", twoPages("/AcroForm << /Fields [2 0 R 3 0 R 7 0 R] >>",
                                    "/Resources << /Font << /F1 7 0 R >> >>",
                                    {"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"}));
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
