#include "DriverTest.h"

#include <QDir>
#include <QFile>
#include <QImage>

// Splitting, passwords and pictures of pages: many files at once, none of which replaces another.

namespace folvane {

namespace {

class Tools : public DriverTest {
protected:
    Tools() { QDir(m_folder.path()).mkdir("out"); }

    QString out(const QString& name) const { return path("out/" + name); }
    QStringList written() const { return QDir(path("out")).entryList(QDir::Files, QDir::Name); }
    QStringList paths(const QStringList& names) const
    {
        QStringList all;
        for (const QString& name : names)
            all << out(name);
        return all;
    }
    QJsonObject inFolder(const char* verb, QJsonObject fields)
    {
        fields["file"] = 0;
        fields["folder"] = path("out");
        return ask(verb, fields);
    }
    static QStringList saved(const QJsonObject& answer) { return answer["saved"].toVariant().toStringList(); }
};

TEST_F(Tools, SplitByRangesCountsNamesUp)
{
    open({pdf("Report.pdf", 6)}, {{"tool", "split"}});
    EXPECT_EQ(ask("state")["sheet"].toString(), "split");
    file("out/Report 3.pdf", "kept");
    const QJsonObject answer = inFolder("split", {{"mode", "ranges"}, {"ranges", "3,3; 1-2"}});
    EXPECT_THAT(answer, HasOutcome("done"));
    EXPECT_EQ(answer["summary"].toString(), "Makes 3 files: 3, 3, 1-2");
    EXPECT_EQ(answer["toast"].toString(), "Saved 3 files");
    EXPECT_EQ(answer["panels"][0]["prompt"].toString(), "Split Here");
    EXPECT_EQ(saved(answer), paths({"Report 3 2.pdf", "Report 3 3.pdf", "Report 1-2.pdf"}));
    qint64 bytes = 0;
    for (const QString& name : saved(answer)) {
        EXPECT_TRUE(isSound(name));
        bytes += contentsOf(name).size();
    }
    EXPECT_EQ(answer["bytes"].toInteger(), bytes);
    EXPECT_EQ(contentsOf(out("Report 3.pdf")), "kept");
    EXPECT_EQ(texts(out("Report 1-2.pdf")), (QStringList{"Report-1", "Report-2"}));
    EXPECT_EQ(texts(out("Report 3 3.pdf")), QStringList("Report-3"));
    EXPECT_TRUE(ask("state")["sheet"].isNull());
}

TEST_F(Tools, SplitFollowsThePagesAsTheyStand)
{
    open({pdf("a.pdf", 5)});
    ask("move", {{"file", 0}, {"pages", QJsonArray{5}}, {"before", 1}});
    ask("delete", {{"file", 0}, {"pages", QJsonArray{2}}});
    EXPECT_THAT(inFolder("split", {{"mode", "every"}, {"every", 3}}), HasOutcome("done"));
    EXPECT_EQ(written(), (QStringList{"a 1-3.pdf", "a 4.pdf"}));
    EXPECT_EQ(texts(out("a 1-3.pdf")), (QStringList{"a-5", "a-2", "a-3"}));
    ask("select", {{"file", 0}, {"pages", QJsonArray{1, 4}}});
    EXPECT_EQ(inFolder("split", {{"mode", "ranges"}})["summary"].toString(), "Makes 2 files: 1, 4");
}

TEST_F(Tools, SplitRefusesWhatIsNoRange)
{
    open({pdf("a.pdf", 2)});
    for (const char* text : {"", "3", "2-1"}) {
        const QJsonObject answer = inFolder("split", {{"mode", "ranges"}, {"ranges", text}});
        EXPECT_THAT(answer, HasOutcome("refused")) << text;
        EXPECT_TRUE(answer["panels"].toArray().isEmpty());
    }
    EXPECT_THAT(ask("split", {{"file", 0}, {"mode", "each"}}), HasOutcome("cancelled"));
    EXPECT_EQ(written(), QStringList());
}

TEST_F(Tools, PiecesOfALockedFileStayLocked)
{
    const QString locked = lockedPdf("a.pdf", {"one", "two"}, "pw");
    open({locked}, {{"passwords", QJsonObject{{locked, QJsonArray{"pw"}}}}});
    EXPECT_THAT(inFolder("split", {{"mode", "each"}}), HasOutcome("done"));
    EXPECT_FALSE(isSound(out("a 2.pdf")));
    EXPECT_EQ(texts(out("a 2.pdf"), "pw"), QStringList("two"));
}

TEST_F(Tools, CancelLeavesWhatIsWritten)
{
    open({pdf("a.pdf", 400)});
    driver->send({{"do", "split"}, {"file", 0}, {"mode", "each"}, {"folder", path("out")}, {"async", true}});
    driver->send({{"do", "close"}, {"file", 0}});
    driver->send({{"do", "cancel"}, {"job", 1}});
    driver->receive();
    driver->receive();
    const QJsonObject cancelled = driver->receive();
    EXPECT_THAT(cancelled, HasOutcome("cancelled"));
    EXPECT_TRUE(cancelled["error"].isNull());
    const QStringList left = written();
    EXPECT_LT(left.size(), 400);
    EXPECT_EQ(QSet(left.begin(), left.end()), QSet([&] {
                  QStringList names = saved(cancelled);
                  for (QString& name : names)
                      name = QFileInfo(name).fileName();
                  return QSet(names.begin(), names.end());
              }()));
    for (const QString& name : left)
        EXPECT_TRUE(isSound(out(name)));
}

TEST_F(Tools, SplittingOutlivesItsDocument)
{
    open({pdf("a.pdf", 30)});
    driver->send({{"do", "split"}, {"file", 0}, {"mode", "each"}, {"folder", path("out")}, {"async", true}});
    driver->send({{"do", "close"}, {"file", 0}});
    driver->receive();
    driver->receive();
    EXPECT_THAT(ask("wait", {{"job", 1}}), HasOutcome("done"));
    EXPECT_EQ(written().size(), 30);
}

QString encryption(const QString& path)
{
    return outputOf("qpdf", {"--show-encryption", path}).trimmed();
}

TEST_F(Tools, ProtectedCopiesOpenWithTheirPasswordAlone)
{
    const QString locked = lockedPdf("a.pdf", {"one", "two"}, "old");
    open({locked}, {{"passwords", QJsonObject{{locked, QJsonArray{"old"}}}}});
    const auto save = [this](const QJsonValue& password, const QString& to) {
        return ask("password", {{"file", 0}, {"password", password}, {"to", path(to)}});
    };
    const QJsonObject plain = save(QJsonValue::Null, "plain.pdf");
    EXPECT_EQ(plain["panels"][0]["name"].toString(), "a (no password).pdf");
    EXPECT_EQ(encryption(path("plain.pdf")), "File is not encrypted");
    EXPECT_EQ(texts(path("plain.pdf")), (QStringList{"one", "two"}));

    const QString password = QStringLiteral("käse 日本");
    EXPECT_EQ(save(password, "new.pdf")["panels"][0]["name"].toString(), "a (protected).pdf");
    EXPECT_EQ(texts(path("new.pdf"), password), (QStringList{"one", "two"}));
    EXPECT_TRUE(isSound(path("new.pdf"), password));
    EXPECT_FALSE(isSound(path("new.pdf")));
    EXPECT_FALSE(isSound(path("new.pdf"), "old"));
    EXPECT_TRUE(outputOf("mutool", {"info", "-p", password, path("new.pdf")}).contains("Pages: 2"));
    EXPECT_FALSE(outputOf("mutool", {"info", path("new.pdf")}).contains("Pages: 2"));
    EXPECT_TRUE(outputOf("pdfinfo", {"-upw", password, path("new.pdf")}).contains("Pages:"));
    EXPECT_FALSE(outputOf("pdfinfo", {path("new.pdf")}).contains("Pages:"));
    save("old", "same.pdf");
    EXPECT_TRUE(isSound(path("same.pdf"), "old"));
    EXPECT_THAT(save("", "empty.pdf"), HasOutcome("refused"));
    EXPECT_TRUE(document()["locked"].toBool());
}

TEST_F(Tools, ExportNamesPagesByTheirPresentPlaces)
{
    open({pdf("Report.pdf", 6)});
    ask("move", {{"file", 0}, {"pages", QJsonArray{6}}, {"before", 1}});
    file("out/Report page 5.jpg", "kept");
    const QJsonObject answer =
        inFolder("exportImages", {{"pages", QJsonArray{5, 2}}, {"jpeg", true}, {"dpi", 100}});
    EXPECT_THAT(answer, HasOutcome("done"));
    EXPECT_EQ(answer["panels"][0]["prompt"].toString(), "Export Here");
    EXPECT_EQ(saved(answer), paths({"Report page 2.jpg", "Report page 5 2.jpg"}));
    EXPECT_EQ(contentsOf(out("Report page 5.jpg")), "kept");
    EXPECT_EQ(QImage(out("Report page 2.jpg")).size(), QSize(833, 1111));

    driver = std::make_unique<DriverProcess>(m_folder.path()); // the settings are kept
    open({pdf("Again.pdf", 1)});
    inFolder("exportImages", {});
    EXPECT_EQ(QImage(out("Again page 1.jpg")).size(), QSize(833, 1111));
}

struct Resolution {
    int dpi;
    bool turned;
    QSize size;
};

class ExportSizes : public Tools, public testing::WithParamInterface<Resolution> {};

TEST_P(ExportSizes, AreRoundedToTheNearestPixel)
{
    open({file("a.pdf",
               QByteArray(contentsOf(pdf("plain.pdf", 1))).replace("[0 0 600 800]", "[3 5 598 847]"))});
    if (GetParam().turned)
        ask("turn", {{"file", 0}});
    EXPECT_THAT(inFolder("exportImages", {{"jpeg", false}, {"dpi", GetParam().dpi}}), HasOutcome("done"));
    const QImage image(out("a page 1.png"));
    EXPECT_EQ(image.size(), GetParam().size);
    EXPECT_EQ(image.pixelColor(2, 2), QColor(Qt::white)) << "no ground shines through";
}

INSTANTIATE_TEST_SUITE_P(Rows, ExportSizes,
                         testing::Values(Resolution{100, false, {826, 1169}},
                                         Resolution{200, false, {1653, 2339}},
                                         Resolution{300, false, {2479, 3508}},
                                         Resolution{300, true, {3508, 2479}}));

} // namespace

} // namespace folvane
