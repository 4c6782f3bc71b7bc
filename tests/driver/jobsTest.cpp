#include "DriverTest.h"

#include <QFile>

// A job that goes on beside the requests that follow. The engine does one thing at a time: a page that takes
// long to draw keeps it busy, so that a save behind it is surely still waiting when the next lines are read.

namespace folvane {

namespace {

class Jobs : public DriverTest {
protected:
    Jobs() { open({pdf("a.pdf", {"1", "2", "3"}), slowPdf("slow.pdf")}); }

    void keepEngineBusy()
    {
        driver->send({{"do", "image"}, {"file", 1}, {"page", 1}, {"longSide", 1000}, {"async", true}});
    }
    void startSaving(const QString& to)
    {
        driver->send({{"do", "saveAs"}, {"file", 0}, {"to", to}, {"async", true}, {"id", "save"}});
    }
    int receiveJob()
    {
        const QJsonObject started = driver->receive();
        EXPECT_EQ(started["ok"], QJsonValue(true));
        return started["job"].toInt();
    }
};

TEST_F(Jobs, AnswerAtOnceAndTellTheirEndToWhoWaits)
{
    startSaving(path("copy.pdf"));
    const QJsonObject started = driver->receive();
    EXPECT_EQ(started, (QJsonObject{{"id", "save"}, {"ok", true}, {"job", 1}}));
    const QJsonObject ended = ask("wait", {{"job", 1}, {"id", 7}});
    EXPECT_THAT(ended, HasOutcome("done"));
    EXPECT_EQ(ended["id"], QJsonValue(7));
    EXPECT_EQ(ended["saved"], QJsonValue(QJsonArray{path("copy.pdf")}));
    EXPECT_EQ(ended["panels"].toArray().size(), 1);
    EXPECT_EQ(ended["toast"].toString(), "Saved “copy.pdf”");
    EXPECT_EQ(ask("wait", {{"job", 1}})["ok"], QJsonValue(false)) << "the answer was given";
    EXPECT_TRUE(isSound(path("copy.pdf")));
}

TEST_F(Jobs, CancelledWriteNothing)
{
    ask("turn", {{"file", 0}});
    keepEngineBusy();
    startSaving(path("copy.pdf"));
    driver->send({{"do", "cancel"}, {"job", 2}});
    receiveJob();
    receiveJob();
    const QJsonObject cancelled = driver->receive();
    EXPECT_THAT(cancelled, HasOutcome("cancelled"));
    EXPECT_TRUE(cancelled["error"].isNull());
    EXPECT_TRUE(cancelled["toast"].isNull());
    EXPECT_FALSE(QFile::exists(path("copy.pdf")));
    EXPECT_TRUE(isEdited());
    EXPECT_TRUE(ask("state")["busy"].isNull());
    EXPECT_THAT(ask("saveAs", {{"file", 0}, {"to", path("copy.pdf")}}), HasOutcome("done"));
}

TEST_F(Jobs, CancelledInMidBuildLeaveWhatIsThere)
{
    file("copy.pdf", "old");
    open({pdf("big.pdf", 4000)});
    driver->send({{"do", "saveAs"}, {"file", 2}, {"to", path("copy.pdf")}, {"async", true}});
    driver->send({{"do", "cancel"}, {"job", 1}});
    receiveJob();
    EXPECT_THAT(driver->receive(), HasOutcome("cancelled"));
    EXPECT_EQ(contentsOf(path("copy.pdf")), "old");
}

TEST_F(Jobs, SecondIsDroppedAfterItsPanel)
{
    keepEngineBusy();
    startSaving(path("first.pdf"));
    driver->send({{"do", "extract"}, {"file", 0}, {"to", path("second.pdf")}});
    driver->send({{"do", "saveAs"}, {"file", 0}});
    driver->send({{"do", "saveAs"}, {"file", 0}, {"to", path("a.pdf")}});
    startSaving(path("third.pdf"));
    receiveJob();
    const int first = receiveJob();
    const QJsonObject second = driver->receive();
    EXPECT_THAT(second, HasOutcome("dropped"));
    EXPECT_TRUE(second["error"].isNull());
    EXPECT_EQ(second["panels"].toArray().size(), 1);
    EXPECT_THAT(driver->receive(), HasOutcome("cancelled")) << "the panel";
    EXPECT_THAT(driver->receive(), HasOutcome("refused")) << "over its own source";
    EXPECT_THAT(ask("wait", {{"job", receiveJob()}}), HasOutcome("dropped"));
    EXPECT_THAT(ask("wait", {{"job", first}}), HasOutcome("done"));
    EXPECT_TRUE(isSound(path("first.pdf")));
    EXPECT_FALSE(QFile::exists(path("second.pdf")));
    EXPECT_FALSE(QFile::exists(path("third.pdf")));
}

TEST_F(Jobs, SaveWhatWasThereWhenTheyBegan)
{
    keepEngineBusy();
    startSaving(path("copy.pdf"));
    driver->send({{"do", "delete"}, {"file", 0}, {"pages", QJsonArray{1}}});
    receiveJob();
    const int job = receiveJob();
    EXPECT_THAT(driver->receive(), HasOutcome("done"));
    EXPECT_THAT(ask("wait", {{"job", job}}), HasOutcome("done"));
    EXPECT_EQ(texts(path("copy.pdf")), (QStringList{"1", "2", "3"}));
    EXPECT_EQ(document()["pages"].toArray().size(), 2);
}

TEST_F(Jobs, KeepTheirErrorsFromOtherRequests)
{
    QFile::link("/dev/full", path("full.pdf"));
    keepEngineBusy();
    startSaving(path("full.pdf"));
    driver->send({{"do", "delete"}, {"file", 1}});
    receiveJob();
    const int job = receiveJob();
    EXPECT_THAT(driver->receive(),
                HasError("A file needs at least one page. To get rid of it, close the file."));
    EXPECT_THAT(ask("wait", {{"job", job}}), HasError("No space left on device"));
}

TEST_F(Jobs, OutliveTheirDocument)
{
    keepEngineBusy();
    startSaving(path("copy.pdf"));
    driver->send({{"do", "close"}, {"file", 0}});
    receiveJob();
    const int job = receiveJob();
    EXPECT_EQ(driver->receive()["verdict"].toString(), "closed");
    EXPECT_THAT(ask("wait", {{"job", job}}), HasOutcome("done"));
    EXPECT_EQ(texts(path("copy.pdf")).size(), 3);
}

TEST_F(Jobs, StopAtTheEndOfInput)
{
    keepEngineBusy();
    startSaving(path("copy.pdf"));
    EXPECT_EQ(driver->finish().size(), 2);
    EXPECT_EQ(driver->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(driver->exitCode(), 0);
    EXPECT_FALSE(QFile::exists(path("copy.pdf")));
}

} // namespace

} // namespace folvane
