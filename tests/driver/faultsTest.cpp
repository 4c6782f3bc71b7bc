#include "DriverTest.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

// What cannot be opened or written says so in its words, and nothing is lost.

namespace folvane {

namespace {

QString damaged(const QString& name)
{
    return QStringLiteral("“%1” can't be opened. It may be damaged or not a PDF.").arg(name);
}

QString inUse(const QString& name)
{
    return QStringLiteral("“%1” is open in Folvane, so it can't be replaced. Save under another name.")
        .arg(name);
}

const QString cannotBeRead =
    QStringLiteral("A page of this file can't be read anymore. Open the file again.");

struct Unopenable {
    const char* name;
    const char* fileName;
    QByteArray bytes;
    const char* outcome = "failed";
    QString error = damaged(QLatin1String(fileName));
};

class Unopenables : public DriverTest, public testing::WithParamInterface<Unopenable> {};

TEST_P(Unopenables, AreRefusedAndTheRestStays)
{
    open({pdf("good.pdf", 2)});
    ask("turn", {{"file", 0}});
    const QJsonObject before = ask("state");
    file(GetParam().fileName, GetParam().bytes);
    const QJsonObject answer = open({path(GetParam().fileName)});
    EXPECT_THAT(answer, HasOutcome(GetParam().outcome));
    EXPECT_THAT(answer, HasError(GetParam().error));
    const QJsonObject after = ask("state");
    EXPECT_EQ(after["documents"], before["documents"]);
    EXPECT_EQ(after["file"], before["file"]);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Unopenables,
    testing::Values(
        Unopenable{"Empty", "x.pdf", ""}, Unopenable{"Text", "x.pdf", "Dear reader,\nthis is no PDF.\n"},
        Unopenable{"HeaderAlone", "x.pdf", "%PDF-1.4\n%\xe2\xe3\xcf\xd3\n"},
        Unopenable{"NoPages", "x.pdf",
                   "%PDF-1.4\n1 0 obj\n<</Type/Catalog/Pages 2 0 R>>\nendobj\n"
                   "2 0 obj\n<</Type/Pages/Count 0/Kids[]>>\nendobj\ntrailer\n<</Root 1 0 R/Size 3>>\n"},
        Unopenable{"Zeros", "x.pdf", QByteArray(4096, '\0')},
        Unopenable{"BrokenPicture", "x.png", "\x89PNG\r\n\x1a\n", "failed", "“x.png” can't be opened."},
        Unopenable{"OtherEnding", "x.dat", "%PDF-1.4\n", "refused", "Folvane opens PDFs and images."}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(DriverTest, RefusesAPdfUnderAnotherEnding)
{
    const QString other = path("x.dat");
    QFile::copy(pdf("x.pdf", 1), other);
    EXPECT_THAT(open({other}), HasError("Folvane opens PDFs and images."));
    EXPECT_TRUE(ask("state")["documents"].toArray().isEmpty());
}

TEST_F(DriverTest, RefusesWhatIsNoFile)
{
    QDir(m_folder.path()).mkpath("folder.pdf");
    ASSERT_EQ(::mkfifo(path("pipe.pdf").toLocal8Bit().constData(), 0600), 0);
    QFile::link(path("nothing.pdf"), path("dangling.pdf"));
    for (const QString& name : {"folder.pdf", "pipe.pdf", "dangling.pdf", "missing.pdf"}) {
        const QJsonObject answer = open({path(name)});
        EXPECT_THAT(answer, HasOutcome("failed"));
        EXPECT_THAT(answer, HasError(damaged(name)));
    }
}

TEST_F(DriverTest, OpensTheOthersBesideOneThatFails)
{
    const QJsonObject answer = open({pdf("a.pdf", 1), file("bad.pdf", "no"), pdf("b.pdf", 1)});
    EXPECT_THAT(answer, HasError(damaged("bad.pdf")));
    EXPECT_EQ(answer["file"], QJsonValue(1));
}

TEST_F(DriverTest, OpensWhatIsLeftOfATruncatedFile)
{
    const QString whole = pdf("whole.pdf", {"1", "2", "3"});
    const QByteArray bytes = contentsOf(whole);
    file("cut.pdf", bytes.first(bytes.indexOf("xref")));
    EXPECT_THAT(open({path("cut.pdf")}), HasOutcome("done"));
    EXPECT_THAT(ask("saveAs", {{"file", 0}, {"to", path("copy.pdf")}}), HasOutcome("done"));
    EXPECT_EQ(texts(path("copy.pdf")), (QStringList{"1", "2", "3"}));
    EXPECT_TRUE(isSound(path("copy.pdf")));
}

class Unprivileged : public DriverTest {
protected:
    Unprivileged() { driver = std::make_unique<DriverProcess>(m_folder.path(), DriverProcess::User::Nobody); }
};

TEST_F(Unprivileged, FileThatMayNotBeRead)
{
    const QString secret = pdf("secret.pdf", 1);
    ASSERT_EQ(::chmod(secret.toLocal8Bit().constData(), 0), 0);
    const QJsonObject answer = open({secret});
    EXPECT_THAT(answer, HasOutcome("failed"));
    EXPECT_THAT(answer, HasError(damaged("secret.pdf")));
}

TEST_F(Unprivileged, FolderThatMayNotBeWritten)
{
    open({pdf("a.pdf", 2)});
    ask("turn", {{"file", 0}});
    QDir(m_folder.path()).mkpath("kept");
    ASSERT_EQ(::chmod(path("kept").toLocal8Bit().constData(), 0555), 0);
    const QJsonObject answer = ask("saveAs", {{"file", 0}, {"to", path("kept/copy.pdf")}});
    EXPECT_THAT(answer, HasOutcome("failed"));
    EXPECT_THAT(answer, HasError("Permission denied"));
    EXPECT_TRUE(QDir(path("kept")).isEmpty());
    EXPECT_TRUE(isEdited());
    EXPECT_THAT(ask("saveAs", {{"file", 0}, {"to", path("home/copy.pdf")}}), HasOutcome("done"));
}

TEST_F(Unprivileged, FileThatMayNotBeReplaced)
{
    open({pdf("a.pdf", 2)});
    const QString kept = file("home/kept.pdf", "old");
    ASSERT_EQ(::chmod(kept.toLocal8Bit().constData(), 0444), 0);
    EXPECT_THAT(ask("saveAs", {{"file", 0}, {"to", kept}}), HasError("Permission denied"));
    EXPECT_EQ(contentsOf(kept), "old");
}

struct SourceTarget {
    const char* name;
    const char* to;
};

class SourceTargets : public DriverTest, public testing::WithParamInterface<SourceTarget> {};

TEST_P(SourceTargets, AreNotWritten)
{
    open({pdf("a.pdf", 2), pdf("b.pdf", 2)});
    ask("insert", {{"file", 0}, {"files", QJsonArray{picture("inserted.png")}}});
    QFile::link(path("a.pdf"), path("symbolic.pdf"));
    QFile::link(path("symbolic.pdf"), path("twice.pdf"));
    std::filesystem::create_hard_link(path("a.pdf").toStdString(), path("hard.pdf").toStdString());
    std::filesystem::create_hard_link(path("inserted.png").toStdString(), path("picture.pdf").toStdString());
    QFile::link(m_folder.path(), path("folder"));
    const QString target = path(GetParam().to);
    const QByteArray before = contentsOf(target);

    const QJsonObject answer = ask("saveAs", {{"file", 0}, {"to", target}});
    EXPECT_THAT(answer, HasOutcome("refused"));
    EXPECT_THAT(answer, HasError(inUse(QFileInfo(target).fileName())));
    EXPECT_THAT(ask("extract", {{"file", 1}, {"to", target}}), HasOutcome("refused"));
    EXPECT_EQ(contentsOf(target), before);
    EXPECT_TRUE(isEdited());
}

INSTANTIATE_TEST_SUITE_P(Rows, SourceTargets,
                         testing::Values(SourceTarget{"OwnSource", "a.pdf"},
                                         SourceTarget{"AnothersSource", "b.pdf"},
                                         SourceTarget{"SymbolicLink", "symbolic.pdf"},
                                         SourceTarget{"LinkToALink", "twice.pdf"},
                                         SourceTarget{"HardLink", "hard.pdf"},
                                         SourceTarget{"ThroughALinkedFolder", "folder/a.pdf"},
                                         SourceTarget{"Roundabout", "home/../a.pdf"},
                                         SourceTarget{"InsertedPicture", "picture.pdf"}),
                         [](const auto& row) { return std::string(row.param.name); });

struct FailingTarget {
    const char* name;
    const char* to;
    const char* error;
};

class FailingTargets : public DriverTest, public testing::WithParamInterface<FailingTarget> {};

TEST_P(FailingTargets, AreToldInTheSystemsWordsAndTheEditsStay)
{
    open({pdf("a.pdf", 2)});
    ask("turn", {{"file", 0}});
    QFile::link("/dev/full", path("full.pdf"));
    QDir(m_folder.path()).mkpath("folder.pdf");
    const QJsonObject answer = ask("saveAs", {{"file", 0}, {"to", path(GetParam().to)}});
    EXPECT_THAT(answer, HasOutcome("failed"));
    EXPECT_THAT(answer, HasError(GetParam().error));
    EXPECT_TRUE(answer["toast"].isNull());
    EXPECT_TRUE(isEdited());
    EXPECT_THAT(ask("saveAs", {{"file", 0}, {"to", path("copy.pdf")}}), HasOutcome("done"));
    EXPECT_FALSE(isEdited());
}

INSTANTIATE_TEST_SUITE_P(Rows, FailingTargets,
                         testing::Values(FailingTarget{"FullDisk", "full.pdf", "No space left on device"},
                                         FailingTarget{"AFolder", "folder.pdf", "Is a directory"},
                                         FailingTarget{"NoFolder", "none/copy.pdf",
                                                       "No such file or directory"}),
                         [](const auto& row) { return std::string(row.param.name); });

class ChangedSource : public DriverTest {
protected:
    ChangedSource() { open({pdf("a.pdf", {"1", "2", "3"}), pdf("b.pdf", {"4"})}); }

    void saves(int file, const QStringList& pages)
    {
        const QString copy = path(QStringLiteral("copy-%1.pdf").arg(file));
        EXPECT_THAT(ask("saveAs", {{"file", file}, {"to", copy}}), HasOutcome("done"));
        EXPECT_EQ(texts(copy), pages);
        EXPECT_TRUE(isSound(copy));
    }
    // Nothing is written, no blank page is shown, and what does not come from the file goes on.
    void isLost()
    {
        ask("turn", {{"file", 0}});
        const QJsonObject answer = ask("saveAs", {{"file", 0}, {"to", path("copy.pdf")}});
        EXPECT_THAT(answer, HasOutcome("failed"));
        EXPECT_THAT(answer, HasError(cannotBeRead));
        EXPECT_FALSE(QFile::exists(path("copy.pdf")));
        EXPECT_TRUE(isEdited());
        EXPECT_EQ(document()["pages"].toArray().size(), 3);
        EXPECT_THAT(ask("image", {{"file", 0}, {"page", 3}, {"longSide", 50}}), HasOutcome("failed"));
        saves(1, {"4"});
    }
};

TEST_F(ChangedSource, GoneGoesOnWorking)
{
    QFile::remove(path("a.pdf"));
    saves(0, {"1", "2", "3"});
}

TEST_F(ChangedSource, ReplacedGoesOnWorking)
{
    pdf("new.pdf", {"other"});
    std::filesystem::rename(path("new.pdf").toStdString(), path("a.pdf").toStdString());
    saves(0, {"1", "2", "3"});
}

TEST_F(ChangedSource, CutShortIsLost)
{
    QFile::resize(path("a.pdf"), 200);
    isLost();
}

TEST_F(ChangedSource, EmptiedIsLost)
{
    QFile::resize(path("a.pdf"), 0);
    isLost();
}

TEST_F(ChangedSource, RewrittenInPlaceIsLost)
{
    const QByteArray other = contentsOf(path("a.pdf")).replace("(3)", "(X)");
    file("a.pdf", other);
    isLost();
}

TEST_F(DriverTest, RefusesToDeleteAllPages)
{
    open({pdf("a.pdf", 2)});
    const QString words = "A file needs at least one page. To get rid of it, close the file.";
    for (const QJsonArray& pages : {QJsonArray{1, 2}, QJsonArray()}) {
        const QJsonObject answer = ask("delete", {{"file", 0}, {"pages", pages}});
        EXPECT_THAT(answer, HasOutcome("refused"));
        EXPECT_THAT(answer, HasError(words));
    }
    EXPECT_EQ(document()["pages"].toArray().size(), 2);
    EXPECT_FALSE(isEdited());
}

} // namespace

} // namespace folvane
