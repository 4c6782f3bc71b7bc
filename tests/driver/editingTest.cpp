#include "DriverTest.h"

// What the edits make of a document, as a second tool reads the saved copy.

namespace folvane {

namespace {

struct Edit {
    const char* name;
    const char* request; ///< to a document of five pages, with pages 2 and 4 selected
    const char* pages;   ///< in the saved copy
    bool edited = true;
    QJsonArray selection{2, 4};
};

class Edits : public DriverTest, public testing::WithParamInterface<Edit> {};

TEST_P(Edits, ReachTheSavedCopy)
{
    pdf("new.pdf", {"N"});
    open({pdf("a.pdf", {"1", "2", "3", "4", "5"})});
    ask("select", {{"file", 0}, {"pages", QJsonArray{2, 4}}});
    EXPECT_THAT(driver->askLine(GetParam().request), HasOutcome("done"));
    const QJsonObject edited = document();
    EXPECT_EQ(edited["isEdited"].toBool(), GetParam().edited);
    EXPECT_EQ(edited["selection"].toArray(), GetParam().selection);
    EXPECT_THAT(ask("saveAs", {{"file", 0}, {"to", path("copy.pdf")}}), HasOutcome("done"));
    EXPECT_EQ(texts(path("copy.pdf")).join(u' '), GetParam().pages);
    EXPECT_TRUE(isSound(path("copy.pdf")));
    EXPECT_FALSE(isEdited());
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Edits,
    testing::Values(
        Edit{"MoveToTheFront",
             R"({"do":"move","file":0,"pages":[5,3],"before":1})",
             "3 5 1 2 4",
             true,
             {4, 5}},
        Edit{
            "MoveToTheEnd", R"({"do":"move","file":0,"pages":[1],"before":null})", "2 3 4 5 1", true, {1, 3}},
        Edit{"MoveTheSelection", R"({"do":"move","file":0,"before":1})", "2 4 1 3 5", true, {1, 2}},
        Edit{"MoveOntoItself", R"({"do":"move","file":0,"pages":[1,2],"before":2})", "1 2 3 4 5", false},
        Edit{"DeleteTheSelection", R"({"do":"delete","file":0})", "1 3 5", true, {}},
        Edit{"DeleteOthers", R"({"do":"delete","file":0,"pages":[1,5]})", "2 3 4", true, {1, 3}},
        Edit{"DropASelectedPage",
             R"({"do":"dropPages","file":0,"page":4,"before":1})",
             "2 4 1 3 5",
             true,
             {1, 2}},
        Edit{"DropAnotherPage",
             R"({"do":"dropPages","file":0,"page":5,"before":1})",
             "5 1 2 3 4",
             true,
             {3, 5}},
        Edit{"InsertBehindTheSelection",
             R"({"do":"insert","file":0,"files":["new.pdf"]})",
             "1 2 3 4 N 5",
             true,
             {5}},
        Edit{"InsertNothing", R"({"do":"insert","file":0,"files":["none.txt"]})", "1 2 3 4 5", false},
        Edit{"SelectAll", R"({"do":"select","file":0})", "1 2 3 4 5", false, {1, 2, 3, 4, 5}},
        Edit{"SelectNone", R"({"do":"select","file":0,"pages":[]})", "1 2 3 4 5", false, {}}),
    [](const auto& row) { return std::string(row.param.name); });

struct Turn {
    const char* name;
    const char* request; ///< to a document of two pages, with page 2 selected
    const char* rotations;
};

class Turns : public DriverTest, public testing::WithParamInterface<Turn> {};

TEST_P(Turns, ReachTheSavedCopy)
{
    open({pdf("a.pdf", 2)});
    ask("select", {{"file", 0}, {"pages", QJsonArray{2}}});
    driver->askLine(GetParam().request);
    ask("saveAs", {{"file", 0}, {"to", path("copy.pdf")}});
    QStringList rotations;
    const QString info = outputOf("pdfinfo", {"-f", "1", "-l", "2", path("copy.pdf")});
    for (const QString& line : info.split(u'\n'))
        if (line.contains("rot:"))
            rotations << line.section(u':', 1).trimmed();
    EXPECT_EQ(rotations.join(u' '), GetParam().rotations);
}

INSTANTIATE_TEST_SUITE_P(Rows, Turns,
                         testing::Values(Turn{"TheSelection", R"({"do":"turn","file":0})", "0 90"},
                                         Turn{"Left", R"({"do":"turn","file":0,"clockwise":false})", "0 270"},
                                         Turn{"GivenPages", R"({"do":"turn","file":0,"pages":[1,2]})",
                                              "90 90"},
                                         Turn{"NoPages", R"({"do":"turn","file":0,"pages":[]})", "0 0"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(DriverTest, TurnsAllPagesWithoutASelection)
{
    open({pdf("a.pdf", 2)});
    ask("turn", {{"file", 0}});
    ask("turn", {{"file", 0}});
    EXPECT_EQ(document()["pages"][0]["turn"], QJsonValue(180));
    EXPECT_EQ(document()["pages"][1]["turn"], QJsonValue(180));
}

TEST_F(DriverTest, ExtractsTheGivenPagesAndSelectsThem)
{
    open({pdf("a.pdf", {"1", "2", "3", "4", "5"})});
    const QJsonObject answer =
        ask("extract", {{"file", 0}, {"pages", QJsonArray{5, 1, 2}}, {"to", path("copy.pdf")}});
    EXPECT_THAT(answer, HasOutcome("done"));
    EXPECT_EQ(answer["panels"][0]["name"].toString(), "a (pages 1-2, 5).pdf");
    EXPECT_EQ(texts(path("copy.pdf")), (QStringList{"1", "2", "5"}));
    EXPECT_TRUE(isSound(path("copy.pdf")));
    EXPECT_EQ(document()["selection"].toArray(), (QJsonArray{1, 2, 5}));
}

TEST_F(DriverTest, OpensMixedFilesAsTheyAreSorted)
{
    const QJsonObject answer = open({picture("10.png"), pdf("b.pdf", 1), picture("2.png"), pdf("a.PDF", 1),
                                     file("notes.txt", "x"), picture("1.png")});
    EXPECT_THAT(answer, HasOutcome("done"));
    EXPECT_EQ(answer["file"], QJsonValue(2));
    EXPECT_EQ(document(0)["name"].toString(), "b");
    EXPECT_EQ(document(1)["name"].toString(), "a");
    const QJsonObject album = document(2);
    EXPECT_EQ(album["isPDF"], QJsonValue(false));
    EXPECT_EQ(album["isEdited"], QJsonValue(true));
    EXPECT_EQ(album["pages"][1]["path"].toString(), path("2.png"));
    EXPECT_EQ(album["pages"][2]["path"].toString(), path("10.png"));
    EXPECT_EQ(open({})["outcome"].toString(), "done");
}

} // namespace

} // namespace folvane
