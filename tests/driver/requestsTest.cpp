#include "DriverTest.h"

#include <QFile>

namespace folvane {

namespace {

using testing::Gt;
using testing::Le;

struct BadLine {
    const char* name;
    QByteArray line;
};

class BadLines : public DriverTest, public testing::WithParamInterface<BadLine> {};

TEST_P(BadLines, AreAnsweredAndTheNextIsCarriedOut)
{
    open({pdf("a.pdf", 2)});
    const QJsonObject answer = driver->askLine(GetParam().line);
    EXPECT_EQ(answer["ok"], QJsonValue(false));
    EXPECT_FALSE(answer["bad"].toString().isEmpty());
    EXPECT_EQ(document()["pages"].toArray().size(), 2);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BadLines,
    testing::Values(
        BadLine{"Blank", ""}, BadLine{"NotJson", "open"}, BadLine{"HalfAnObject", R"({"do":"state")"},
        BadLine{"AnArray", R"(["state"])"}, BadLine{"NotUtf8", "{\"do\":\"\xff\xfe\"}"},
        BadLine{"TooDeep", QByteArray(5000, '[')}, BadLine{"TooLong", '"' + QByteArray(17 << 20, 'x') + '"'},
        BadLine{"NoVerb", "{}"}, BadLine{"VerbIsANumber", R"({"do":1})"},
        BadLine{"UnknownVerb", R"({"do":"sing"})"}, BadLine{"AsyncIsText", R"({"do":"state","async":"yes"})"},
        BadLine{"NoFiles", R"({"do":"open"})"}, BadLine{"FilesIsANumber", R"({"do":"open","files":3})"},
        BadLine{"EmptyPath", R"({"do":"open","files":[""]})"},
        BadLine{"UnknownTool", R"({"do":"open","files":[],"tool":"hammer"})"},
        BadLine{"PasswordsIsAList", R"({"do":"open","files":[],"passwords":["x"]})"},
        BadLine{"PasswordIsNoList", R"({"do":"open","files":[],"passwords":{"a":"x"}})"},
        BadLine{"NoFile", R"({"do":"turn"})"}, BadLine{"FileIsText", R"({"do":"turn","file":"a"})"},
        BadLine{"FileIsNegative", R"({"do":"close","file":-1})"},
        BadLine{"FileIsAFraction", R"({"do":"close","file":0.5})"},
        BadLine{"NoSuchFile", R"({"do":"close","file":1})"},
        BadLine{"HugeFile", R"({"do":"close","file":1e300})"},
        BadLine{"PagesIsText", R"({"do":"delete","file":0,"pages":"1"})"},
        BadLine{"PageZero", R"({"do":"delete","file":0,"pages":[0]})"},
        BadLine{"PagePastTheEnd", R"({"do":"delete","file":0,"pages":[3]})"},
        BadLine{"PageIsText", R"({"do":"delete","file":0,"pages":["1"]})"},
        BadLine{"ClockwiseIsText", R"({"do":"turn","file":0,"clockwise":"no"})"},
        BadLine{"BeforeIsText", R"({"do":"move","file":0,"pages":[1],"before":"end"})"},
        BadLine{"NoPageToDrop", R"({"do":"dropPages","file":0})"},
        BadLine{"NoLongSide", R"({"do":"image","file":0,"page":1})"},
        BadLine{"UnwritablePicture",
                R"({"do":"image","file":0,"page":1,"longSide":9,"to":"/nowhere/a.png"})"},
        BadLine{"ToIsANumber", R"({"do":"saveAs","file":0,"to":1})"},
        BadLine{"AsyncAndBad", R"({"do":"saveAs","file":7,"async":true})"},
        BadLine{"UnknownAnswer", R"({"do":"closeRequest","file":0,"answer":"perhaps"})"},
        BadLine{"UnknownQuitAnswer", R"({"do":"quit","answer":"dontSave"})"},
        BadLine{"NoCount", R"({"do":"parse","text":"1"})"},
        BadLine{"NumbersIsText", R"({"do":"describe","numbers":"1"})"}, BadLine{"NoJob", R"({"do":"wait"})"},
        BadLine{"UnknownJob", R"({"do":"cancel","job":1})"},
        BadLine{"WaitsBeside", R"({"do":"wait","job":1,"async":true})"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(DriverTest, GivesTheIdBackAsItCame)
{
    const QJsonArray ids{"text", qint64(9007199254740993),         1.5, QJsonValue::Null,
                         true,   QJsonObject{{"a", QJsonArray{1}}}};
    for (const QJsonValue& id : ids) {
        EXPECT_EQ(ask("state", {{"id", id}})["id"], id);
        EXPECT_EQ(ask("sing", {{"id", id}})["id"], id);
    }
    EXPECT_FALSE(ask("state").contains("id"));
}

TEST_F(DriverTest, AnswersTheLastLineWithoutItsEnd)
{
    driver->sendLine("{\"do\":\"rss\",\"id\":1}\n{\"do\":\"state\",\"id\":2}");
    const QList<QJsonObject> answers = driver->finish();
    ASSERT_EQ(answers.size(), 2);
    EXPECT_EQ(answers[1]["id"], QJsonValue(2));
    EXPECT_EQ(driver->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(driver->exitCode(), 0);
}

TEST_F(DriverTest, ParsesAndDescribesPageNumbers)
{
    EXPECT_EQ(ask("parse", {{"text", "8-10; 1–3"}, {"count", 10}})["ranges"],
              QJsonValue(QJsonArray{QJsonArray{8, 10}, QJsonArray{1, 3}}));
    EXPECT_TRUE(ask("parse", {{"text", "5-3"}, {"count", 10}})["ranges"].isNull());
    EXPECT_EQ(ask("describe", {{"numbers", QJsonArray{9, 1, 2, 3, 5, 8, 3}}})["text"].toString(),
              "1-3, 5, 8-9");
}

TEST_F(DriverTest, TellsItsPeakAsTheSystemDoes)
{
    const double peak = ask("rss")["peak"].toDouble();
    const QByteArray status = contentsOf(QStringLiteral("/proc/%1/status").arg(driver->processId()));
    const double now =
        status.mid(status.indexOf("VmHWM:") + 6).simplified().split(' ').first().toDouble() * 1024;
    EXPECT_THAT(peak, Gt(0));
    EXPECT_THAT(peak, Le(now));
    EXPECT_THAT(peak, Gt(now * 0.9));
}

TEST_F(DriverTest, ShowsTheWholeState)
{
    const QString a = pdf("a.pdf", 2);
    const QString locked = lockedPdf("b.pdf", {"one"}, "secret");
    EXPECT_EQ(ask("state")["destination"].toString(), "home");
    open({a});
    const QJsonObject opened =
        open({locked}, {{"tool", "split"}, {"passwords", QJsonObject{{locked, QJsonArray{"secret"}}}}});
    EXPECT_EQ(opened["file"], QJsonValue(1));
    EXPECT_THAT(opened["ms"].toDouble(), Gt(0));
    ask("select", {{"file", 0}, {"pages", QJsonArray{2}}});
    ask("turn", {{"file", 0}});

    const QJsonObject state = ask("state");
    EXPECT_EQ(state["destination"].toString(), "file");
    EXPECT_EQ(state["file"], QJsonValue(1));
    EXPECT_EQ(state["sheet"].toString(), "split");
    EXPECT_TRUE(state["busy"].isNull());
    EXPECT_TRUE(state["closing"].isNull());
    const QJsonObject first = state["documents"][0].toObject();
    EXPECT_EQ(first["url"].toString(), "file://" + a);
    EXPECT_EQ(first["name"].toString(), "a");
    EXPECT_EQ(first["isPDF"], QJsonValue(true));
    EXPECT_EQ(first["isEdited"], QJsonValue(true));
    EXPECT_EQ(first["locked"], QJsonValue(false));
    EXPECT_EQ(first["selection"], QJsonValue(QJsonArray{2}));
    EXPECT_EQ(first["statusLine"].toString(), "2 pages · 1 selected · not saved");
    const QJsonObject page = first["pages"][1].toObject();
    EXPECT_EQ(page["path"].toString(), a);
    EXPECT_EQ(page["index"], QJsonValue(1));
    EXPECT_EQ(page["turn"], QJsonValue(90));
    EXPECT_EQ(page["width"], QJsonValue(800));
    EXPECT_EQ(page["height"], QJsonValue(600));
    EXPECT_EQ(state["documents"][1]["locked"], QJsonValue(true));
}

TEST_F(DriverTest, DrawsAPageAsItIsTurned)
{
    open({pdf("a.pdf", 1)});
    ask("turn", {{"file", 0}, {"clockwise", false}});
    const QJsonObject drawn =
        ask("image", {{"file", 0}, {"page", 1}, {"longSide", 80}, {"to", path("a.png")}});
    EXPECT_EQ(drawn["width"], QJsonValue(80));
    EXPECT_EQ(drawn["height"], QJsonValue(60));
    EXPECT_TRUE(contentsOf(path("a.png")).startsWith("\x89PNG"));
}

TEST_F(DriverTest, CountsSavedFilesInPreferencesOfItsOwn)
{
    open({pdf("a.pdf", 1)});
    ask("saveAs", {{"file", 0}, {"to", path("one.pdf")}});
    ask("extract", {{"file", 0}, {"to", path("two.pdf")}});
    driver->finish();
    EXPECT_TRUE(contentsOf(path("home/folvane/folvane.ini")).contains("friend.savedFiles=2"));
}

} // namespace

} // namespace folvane
