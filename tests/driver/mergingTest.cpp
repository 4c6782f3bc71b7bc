#include "DriverTest.h"

#include "pdf/rawPdf.h"

#include <QRandomGenerator>
#include <QRegularExpression>

// Several files joined into one, and what becomes of what belongs to a whole document.

namespace folvane {

namespace {

class Merging : public DriverTest {
protected:
    QJsonObject add(const QStringList& paths, QJsonObject more = {})
    {
        more["files"] = QJsonArray::fromStringList(paths);
        return ask("mergeAdd", more);
    }
    QString rows()
    {
        QStringList rows;
        for (const QJsonValue row : ask("state")["merge"].toArray())
            rows << row["name"].toString() + ':' + QString::number(row["pages"].toInt());
        return rows.join(' ');
    }
    QJsonObject merge(const QString& to) { return ask("merge", {{"to", to}}); }
};

TEST_F(Merging, FollowsTheList)
{
    open({pdf("a.pdf", 3)});
    ask("delete", {{"file", 0}, {"pages", QJsonArray{2}}});
    EXPECT_THAT(ask("mergeAdd", {{"file", 0}}), HasOutcome("done"));
    EXPECT_EQ(ask("state")["destination"].toString(), "merge");
    EXPECT_THAT(add({pdf("b.pdf", 1), picture("p.png"), file("notes.txt", "x"), pdf("c.pdf", 2)}),
                HasOutcome("done"));
    EXPECT_EQ(rows(), "a:2 b:1 p:1 c:2");
    ask("mergeMove", {{"from", 3}, {"to", 0}});
    ask("mergeMove", {{"from", QJsonArray{1, 2}}, {"to", 4}});
    EXPECT_EQ(rows(), "c:2 p:1 a:2 b:1");
    ask("mergeRemove", {{"row", 1}});
    const QJsonObject merged = merge(path("out.pdf"));
    EXPECT_THAT(merged, HasOutcome("done"));
    EXPECT_EQ(merged["saved"], QJsonValue(QJsonArray{path("out.pdf")}));
    EXPECT_EQ(merged["bytes"].toInteger(), contentsOf(path("out.pdf")).size());
    EXPECT_EQ(merged["panels"][0]["name"].toString(), "c (merged).pdf");
    EXPECT_TRUE(isSound(path("out.pdf")));
    EXPECT_EQ(texts(path("out.pdf")), (QStringList{"c-1", "c-2", "a-1", "a-3", "b-1"}));
    ask("mergeClear");
    EXPECT_EQ(rows(), "");
}

TEST_F(Merging, EndsAsItIsTold)
{
    const QStringList both{pdf("a.pdf", 1), lockedPdf("b.pdf", {"locked"}, "pw")};
    EXPECT_THAT(merge(path("out.pdf")), HasOutcome("refused"));
    EXPECT_THAT(add(both), HasOutcome("cancelled"));
    EXPECT_EQ(rows(), "a:1");
    EXPECT_THAT(merge(path("out.pdf")), HasOutcome("refused"));
    const QJsonObject added = add({both[1]}, {{"passwords", QJsonObject{{both[1], QJsonArray{"pw"}}}}});
    EXPECT_THAT(added, HasOutcome("done"));
    EXPECT_EQ(added["prompts"].toArray().size(), 1);
    EXPECT_THAT(ask("merge"), HasOutcome("cancelled"));
    EXPECT_THAT(merge(both[0]), HasOutcome("refused"));
    EXPECT_THAT(merge(path("out.pdf")), HasOutcome("done"));
    EXPECT_EQ(texts(path("out.pdf")), (QStringList{"a-1", "locked"}));
    EXPECT_THAT(add({file("bad.pdf", "?")}), HasOutcome("failed"));
    EXPECT_EQ(ask("mergeMove", {{"from", 2}, {"to", 0}})["ok"], QJsonValue(false));
    EXPECT_EQ(ask("mergeMove", {{"from", 0}, {"to", 3}})["ok"], QJsonValue(false));
}

QByteArray noise(qsizetype size)
{
    QByteArray bytes(size, '\0');
    QRandomGenerator random(1);
    for (char& byte : bytes)
        byte = char(random.bounded(256));
    return bytes;
}

/// Two pages: the first has a link to the second, another by the name "end", and a text field; the second has a
/// picture that weighs more than all else, and a bookmark. Both are labelled with the letter.
QByteArray wholeDocument(const QByteArray& letter)
{
    const QByteArray samples = noise(100 * 100 * 3);
    const QByteArray drawing = "100 0 0 100 0 0 cm /I Do";
    const QList<QByteArray> bodies{
        "<</Type/Catalog/Pages 2 0 R/AcroForm<</Fields[5 0 R]/DR<</Font<</F 8 0 R>>>>/DA(/F 12 Tf 0 g)>>"
        "/Outlines 6 0 R/PageLabels<</Nums[0<</P("
            + letter + "-)/S/D>>]>>/Names<</Dests<</Names[(end)[4 0 R/Fit]]>>>>>>",
        "<</Type/Pages/Count 2/Kids[3 0 R 4 0 R]>>",
        "<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Annots[5 0 R 9 0 R 10 0 R]>>",
        "<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Contents 13 0 R"
        "/Resources<</XObject<</I 12 0 R>>>>>>",
        "<</Type/Annot/Subtype/Widget/FT/Tx/T(name)/V(" + letter
            + ")/Rect[50 50 200 80]/P 3 0 R/DA(/F 12 Tf 0 g)>>",
        "<</Type/Outlines/First 7 0 R/Last 7 0 R/Count 1>>",
        "<</Title(" + letter + " two)/Parent 6 0 R/Dest[4 0 R/Fit]>>",
        "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>",
        "<</Type/Annot/Subtype/Link/Rect[50 100 200 130]/Dest[4 0 R/Fit]>>",
        "<</Type/Annot/Subtype/Link/Rect[50 200 200 230]/A 11 0 R>>",
        "<</S/GoTo/D(end)>>",
        pdf::rawStream(
            "/Type/XObject/Subtype/Image/Width 100/Height 100/ColorSpace/DeviceRGB/BitsPerComponent 8",
            samples),
        pdf::rawStream({}, drawing)};
    return pdf::rawPdf(bodies);
}

/// What belongs to the document as a whole, by the eyes of libraries that had no part in making it.
class MergingWholeDocuments : public Merging {
protected:
    /// "1>2": a link on page 1 that leads to page 2.
    QStringList links(const QString& pdf)
    {
        return printed(pdf, R"(
            for (var i = 0; i < pdf.countPages(); ++i)
                pdf.loadPage(i).getLinks().forEach(function (link) {
                    print((i + 1) + ">" + link.uri.replace(/^#page=([0-9]+).*/, "$1"));
                });)");
    }
    /// "name=value on 1", in the order of the form, where the widget is the page's first annotation.
    QStringList fields(const QString& pdf)
    {
        return printed(pdf, R"(
            var fields = pdf.getTrailer().get("Root").get("AcroForm").get("Fields");
            for (var i = 0; i < fields.length; ++i) {
                var field = fields.get(i);
                for (var page = 0; page < pdf.countPages(); ++page) {
                    var annotations = pdf.findPage(page).get("Annots");
                    if (annotations && annotations.get(0).asIndirect() === field.asIndirect())
                        print(field.get("T").asString() + "=" + field.get("V").asString() + " on " + (page + 1));
                }
            })");
    }
    /// "title on 2".
    static QStringList bookmarks(const QString& pdf)
    {
        static const QRegularExpression line(R"re(^\|\s*"(.*)"\s+#page=([0-9]+).*$)re");
        return lines(outputOf("mutool", {"show", pdf, "outline"})).replaceInStrings(line, R"(\1 on \2)");
    }
    /// "name on 2", in the order of the pages.
    static QStringList destinations(const QString& pdf)
    {
        static const QRegularExpression line(R"re(^ *([0-9]+) \[.*\] "(.*)"$)re");
        return lines(outputOf("pdfinfo", {"-dests", pdf})).mid(1).replaceInStrings(line, R"(\2 on \1)");
    }
    /// The number tree, as it stands there, without white space.
    static QString labels(const QString& pdf)
    {
        static const QRegularExpression space(R"(\s+)");
        return outputOf("mutool", {"show", pdf, "trailer/Root/PageLabels"}).remove(space);
    }
    /// Of each page, in degrees.
    static QStringList rotations(const QString& pdf)
    {
        static const QRegularExpression line(R"(^Page.* rot: *([0-9]+)$)");
        return lines(outputOf("pdfinfo", {"-l", "-1", pdf})).filter(line).replaceInStrings(line, R"(\1)");
    }

private:
    QStringList printed(const QString& pdf, const QString& script)
    {
        const QString all = "var pdf = new PDFDocument(scriptArgs[0]);" + script;
        return lines(outputOf("mutool", {"run", file("script.js", all.toUtf8()), pdf}));
    }
    static QStringList lines(const QString& text) { return text.split(u'\n', Qt::SkipEmptyParts); }
};

TEST_F(MergingWholeDocuments, KeepsFormsLinksBookmarksAndLabelsOfEach)
{
    const QString a = file("a.pdf", wholeDocument("a"));
    add({a, file("b.pdf", wholeDocument("b")), pdf("plain.pdf", 1), a});
    const QString out = path("out.pdf");
    ASSERT_THAT(merge(out), HasOutcome("done"));
    ASSERT_TRUE(isSound(out));
    EXPECT_EQ(links(out), (QStringList{"1>2", "1>2", "3>4", "3>4", "6>7", "6>7"}));
    EXPECT_EQ(bookmarks(out), (QStringList{"a two on 2", "b two on 4", "a two on 7"}));
    EXPECT_EQ(destinations(out), (QStringList{"end on 2", "end+1 on 4", "end+2 on 7"}));
    EXPECT_EQ(fields(out), (QStringList{"name=a on 1", "name+1=b on 3", "name+2=a on 6"}));
    EXPECT_EQ(labels(out), "<</Nums[0<</P(a-)/S/D>>2<</P(b-)/S/D>>4<</S/D/St5>>5<</P(a-)/S/D>>]>>");
    EXPECT_LT(contentsOf(out).size(), 2.2 * contentsOf(a).size()) << "the copies share their picture";
}

TEST_F(MergingWholeDocuments, TakesOneAsItWasEachTime)
{
    const QString a = file("a.pdf", wholeDocument("a"));
    open({a});
    ask("turn", {{"file", 0}, {"pages", QJsonArray{2}}});
    ask("mergeAdd", {{"file", 0}});
    ask("delete", {{"file", 0}, {"pages", QJsonArray{2}}});
    ask("mergeAdd", {{"file", 0}});

    const QString out = path("out.pdf");
    ASSERT_THAT(merge(out), HasOutcome("done"));
    ASSERT_TRUE(isSound(out));
    EXPECT_EQ(links(out), (QStringList{"1>2", "1>2"})) << "those of page 3 would lead to what is left out";
    EXPECT_EQ(bookmarks(out), (QStringList{"a two on 2"}));
    EXPECT_EQ(destinations(out), (QStringList{"end on 2"}));
    EXPECT_EQ(fields(out), (QStringList{"name=a on 1", "name+1=a on 3"}));
    EXPECT_EQ(labels(out), "<</Nums[0<</P(a-)/S/D>>2<</P(a-)/S/D>>]>>");
    EXPECT_EQ(rotations(out), (QStringList{"0", "90", "0"}));

    ask("mergeMove", {{"from", 1}, {"to", 0}});
    const QString other = path("other.pdf");
    ASSERT_THAT(merge(other), HasOutcome("done"));
    ASSERT_TRUE(isSound(other));
    EXPECT_EQ(links(other), (QStringList{"2>3", "2>3"}));
    EXPECT_EQ(bookmarks(other), (QStringList{"a two on 3"}));
    EXPECT_EQ(destinations(other), (QStringList{"end on 3"}));
    EXPECT_EQ(fields(other), (QStringList{"name=a on 1", "name+1=a on 2"}));
    EXPECT_EQ(labels(other), "<</Nums[0<</P(a-)/S/D>>1<</P(a-)/S/D>>]>>");
    EXPECT_EQ(rotations(other), (QStringList{"0", "0", "90"}));
}

TEST_F(MergingWholeDocuments, ADocumentWithAPageTwiceIsOneDocument)
{
    const QString a = file("a.pdf", wholeDocument("a"));
    open({a});
    ask("insert", {{"file", 0}, {"files", QJsonArray{a}}});
    ask("mergeAdd", {{"file", 0}});
    add({a});
    const QString out = path("out.pdf");
    ASSERT_THAT(merge(out), HasOutcome("done"));
    ASSERT_TRUE(isSound(out));
    EXPECT_EQ(links(out), (QStringList{"1>2", "1>2", "3>2", "3>2", "5>6", "5>6"}));
    EXPECT_EQ(bookmarks(out), (QStringList{"a two on 2", "a two on 6"}));
    EXPECT_EQ(destinations(out), (QStringList{"end on 2", "end+1 on 6"}));
    EXPECT_EQ(fields(out), (QStringList{"name=a on 1", "name+1=a on 3", "name+2=a on 5"}));
}
} // namespace

} // namespace folvane
