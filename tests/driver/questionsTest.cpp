#include "DriverTest.h"

#include <QDir>

// Panels and password prompts: what is answered, and what is told of them.

namespace folvane {

namespace {

QJsonArray prompts(const QJsonObject& answer)
{
    return answer["prompts"].toArray();
}

QJsonObject prompt(const char* fileName, bool wasWrong)
{
    return {{"fileName", fileName}, {"wasWrong", wasWrong}};
}

class Panels : public DriverTest {
protected:
    Panels() { open({pdf("report.pdf", 3)}); }
};

TEST_F(Panels, AreToldWithAllTheyAsk)
{
    const QJsonObject answer = ask("saveAs", {{"file", 0}});
    EXPECT_THAT(answer, HasOutcome("cancelled"));
    const QJsonObject panel = answer["panels"][0].toObject();
    EXPECT_EQ(panel, (QJsonObject{{"kind", "save"},
                                  {"name", "report (edited).pdf"},
                                  {"near", m_folder.path()},
                                  {"prompt", QJsonValue::Null},
                                  {"types", QJsonArray{"pdf"}}}));
    EXPECT_EQ(answer["saved"].toArray().size(), 0);
}

TEST_F(Panels, TakeAPathFromTheWorkingFolder)
{
    const QJsonObject answer = ask("saveAs", {{"file", 0}, {"to", "here.pdf"}});
    EXPECT_THAT(answer, HasOutcome("done"));
    EXPECT_EQ(answer["saved"], QJsonValue(QJsonArray{path("here.pdf")}));
    EXPECT_EQ(answer["bytes"].toInteger(), contentsOf(path("here.pdf")).size());
    EXPECT_EQ(answer["toast"].toString(), "Saved “here.pdf”");
}

TEST_F(Panels, AskAgainBeforeTheAddedEndingReplacesAFile)
{
    file("there.pdf", "old");
    const QJsonObject no = ask("saveAs", {{"file", 0}, {"to", path("there")}});
    EXPECT_THAT(no, HasOutcome("cancelled"));
    EXPECT_EQ(no["panels"][1]["kind"].toString(), "replace");
    EXPECT_EQ(no["panels"][1]["name"].toString(), "there.pdf");
    EXPECT_EQ(no["panels"][2]["kind"].toString(), "save");
    EXPECT_EQ(contentsOf(path("there.pdf")), "old");

    const QJsonObject other =
        ask("saveAs", {{"file", 0}, {"to", QJsonArray{path("there"), path("else.pdf")}}});
    EXPECT_EQ(other["saved"], QJsonValue(QJsonArray{path("else.pdf")}));
    EXPECT_EQ(contentsOf(path("there.pdf")), "old");

    const QJsonObject yes = ask("saveAs", {{"file", 0}, {"to", path("there")}, {"replace", true}});
    EXPECT_EQ(yes["saved"], QJsonValue(QJsonArray{path("there.pdf")}));
    EXPECT_TRUE(isSound(path("there.pdf")));
}

TEST_F(Panels, DoNotLeaveTheirAnswersToTheNextRequest)
{
    ask("state", {{"to", path("left-over.pdf")}});
    EXPECT_THAT(ask("saveAs", {{"file", 0}}), HasOutcome("cancelled"));
}

class Passwords : public DriverTest {
protected:
    QString locked(const char* folder, const char* password)
    {
        QDir(m_folder.path()).mkpath(folder);
        return lockedPdf(QLatin1String(folder) + "/x.pdf", {QLatin1String(folder)}, password);
    }
};

TEST_F(Passwords, AreTriedInOrder)
{
    const QString file = locked("a", "right");
    const QJsonObject answer =
        open({file}, {{"passwords", QJsonObject{{file, QJsonArray{"wrong", "right"}}}}});
    EXPECT_THAT(answer, HasOutcome("done"));
    EXPECT_EQ(prompts(answer), (QJsonArray{prompt("x.pdf", false), prompt("x.pdf", true)}));
    ask("saveAs", {{"file", 0}, {"to", path("copy.pdf")}});
    EXPECT_EQ(texts(path("copy.pdf"), "right"), QStringList{"a"});
    EXPECT_FALSE(isSound(path("copy.pdf")));
}

TEST_F(Passwords, EndWithCancel)
{
    const QString file = locked("a", "right");
    const QJsonObject answer = open({file}, {{"passwords", QJsonObject{{file, QJsonArray{"wrong"}}}}});
    EXPECT_THAT(answer, HasOutcome("cancelled"));
    EXPECT_TRUE(answer["error"].isNull());
    EXPECT_TRUE(answer["file"].isNull());
    EXPECT_EQ(prompts(answer).size(), 2);
}

TEST_F(Passwords, CancelOfOneLeavesTheOthers)
{
    const QStringList files{locked("a", "A"), locked("b", "B"), locked("c", "C")};
    const QJsonObject passwords{
        {files[0], QJsonArray{"A"}}, {files[1], QJsonArray()}, {files[2], QJsonArray{"C"}}};
    const QJsonObject answer = open(files, {{"passwords", passwords}});
    EXPECT_EQ(prompts(answer).size(), 3);
    EXPECT_EQ(answer["file"], QJsonValue(1));
    EXPECT_EQ(document(1)["pages"][0]["path"].toString(), files[2]);
}

TEST_F(Passwords, UnlockWhatIsInsertedToo)
{
    const QString file = locked("a", "right");
    open({pdf("plain.pdf", 1)});
    const QJsonObject answer = ask(
        "insert",
        {{"file", 0}, {"files", QJsonArray{file}}, {"passwords", QJsonObject{{file, QJsonArray{"right"}}}}});
    EXPECT_THAT(answer, HasOutcome("done"));
    ask("saveAs", {{"file", 0}, {"to", path("copy.pdf")}});
    EXPECT_EQ(texts(path("copy.pdf")), (QStringList{"plain-1", "a"}));
}

} // namespace

} // namespace folvane
