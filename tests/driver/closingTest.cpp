#include "DriverTest.h"

namespace folvane {

namespace {

class Closing : public DriverTest {
protected:
    Closing()
    {
        open({pdf("a.pdf", 2)});
        open({pdf("b.pdf", 2)});
    }
    int documents() { return int(ask("state")["documents"].toArray().size()); }
    void edit(int file) { ask("turn", {{"file", file}}); }
};

TEST_F(Closing, AsksNothingAboutACleanDocument)
{
    const QJsonObject answer = ask("closeRequest", {{"file", 1}});
    EXPECT_THAT(answer, HasOutcome("done"));
    EXPECT_EQ(answer["names"].toArray().size(), 0);
    EXPECT_EQ(answer["verdict"].toString(), "closed");
    EXPECT_EQ(ask("state")["file"], QJsonValue(0));
}

TEST_F(Closing, CancelKeepsTheEdits)
{
    edit(0);
    const QJsonObject answer = ask("closeRequest", {{"file", 0}, {"answer", "cancel"}});
    EXPECT_THAT(answer, HasOutcome("cancelled"));
    EXPECT_EQ(answer["names"], QJsonValue(QJsonArray{"a"}));
    EXPECT_EQ(answer["verdict"].toString(), "open");
    EXPECT_TRUE(isEdited(0));
    EXPECT_TRUE(ask("state")["closing"].isNull());
}

TEST_F(Closing, DontSaveCloses)
{
    edit(0);
    const QJsonObject answer = ask("closeRequest", {{"file", 0}, {"answer", "dontSave"}});
    EXPECT_EQ(answer["verdict"].toString(), "closed");
    EXPECT_EQ(documents(), 1);
    EXPECT_EQ(document(0)["name"].toString(), "b");
}

TEST_F(Closing, SaveAsSavesAndLeavesTheDocumentOpen)
{
    edit(0);
    const QJsonObject answer =
        ask("closeRequest", {{"file", 0}, {"answer", "saveAs"}, {"to", path("copy.pdf")}});
    EXPECT_THAT(answer, HasOutcome("done"));
    EXPECT_EQ(answer["verdict"].toString(), "open");
    EXPECT_EQ(answer["saved"], QJsonValue(QJsonArray{path("copy.pdf")}));
    EXPECT_FALSE(isEdited(0));
    EXPECT_EQ(ask("closeRequest", {{"file", 0}})["verdict"].toString(), "closed");
}

TEST_F(Closing, FailedSaveAsKeepsTheDocumentAndItsEdits)
{
    edit(0);
    const QJsonObject answer =
        ask("closeRequest", {{"file", 0}, {"answer", "saveAs"}, {"to", path("b.pdf")}});
    EXPECT_THAT(answer, HasOutcome("refused"));
    EXPECT_TRUE(isEdited(0));
    EXPECT_EQ(documents(), 2);
}

TEST_F(Closing, CloseAsksNothing)
{
    edit(0);
    EXPECT_EQ(ask("close", {{"file", 0}})["verdict"].toString(), "closed");
    EXPECT_EQ(documents(), 1);
}

TEST_F(Closing, QuitNamesTheEditedDocuments)
{
    EXPECT_EQ(ask("quit")["verdict"].toString(), "terminateNow");
    edit(0);
    edit(1);
    const QJsonObject stays = ask("quit", {{"answer", "cancel"}});
    EXPECT_THAT(stays, HasOutcome("cancelled"));
    EXPECT_EQ(stays["names"], QJsonValue(QJsonArray{"a", "b"}));
    EXPECT_EQ(stays["verdict"].toString(), "terminateCancel");
    EXPECT_EQ(ask("quit", {{"answer", "quitAnyway"}})["verdict"].toString(), "terminateNow");
    EXPECT_EQ(documents(), 2);
}

TEST_F(Closing, ReleasesTheSourceForWhoeverWritesIt)
{
    edit(0);
    EXPECT_THAT(ask("saveAs", {{"file", 0}, {"to", path("b.pdf")}}), HasOutcome("refused"));
    ask("close", {{"file", 1}});
    EXPECT_THAT(ask("saveAs", {{"file", 0}, {"to", path("b.pdf")}}), HasOutcome("done"));
    open({path("b.pdf")});
    EXPECT_EQ(document(1)["pages"][0]["width"], QJsonValue(800));
}

} // namespace

} // namespace folvane
