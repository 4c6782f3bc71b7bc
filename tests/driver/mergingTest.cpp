#include "DriverTest.h"

#include <QJsonDocument>
#include <QSet>

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

/// Two pages: the first has a link to the second and a text field, both are labelled with the letter, and a bookmark
/// leads to the second.
QByteArray wholeDocument(const QByteArray& letter)
{
    const QList<QByteArray> bodies{
        "<</Type/Catalog/Pages 2 0 R/AcroForm<</Fields[5 0 R]/DR<</Font<</F 8 0 R>>>>/DA(/F 12 Tf 0 g)>>"
        "/Outlines 6 0 R/PageLabels<</Nums[0<</P("
            + letter + "-)/S/D>>]>>>>",
        "<</Type/Pages/Count 2/Kids[3 0 R 4 0 R]>>",
        "<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Annots[5 0 R 9 0 R]>>",
        "<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]>>",
        "<</Type/Annot/Subtype/Widget/FT/Tx/T(name)/V(" + letter
            + ")/Rect[50 50 200 80]/P 3 0 R/DA(/F 12 Tf 0 g)>>",
        "<</Type/Outlines/First 7 0 R/Last 7 0 R/Count 1>>",
        "<</Title(" + letter + " two)/Parent 6 0 R/Dest[4 0 R/Fit]>>",
        "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>",
        "<</Type/Annot/Subtype/Link/Rect[50 100 200 130]/Dest[4 0 R/Fit]>>"};
    QByteArray bytes = "%PDF-1.4\n";
    QByteArray table = "0000000000 65535 f \n";
    for (qsizetype i = 0; i < bodies.size(); ++i) {
        table += QByteArray::number(bytes.size()).rightJustified(10, '0') + " 00000 n \n";
        bytes += QByteArray::number(i + 1) + " 0 obj\n" + bodies[i] + "\nendobj\n";
    }
    const QByteArray start = QByteArray::number(bytes.size());
    return bytes + "xref\n0 10\n" + table + "trailer\n<</Size 10/Root 1 0 R>>\nstartxref\n" + start
           + "\n%%EOF\n";
}

/// What qpdf tells of a file.
QJsonObject described(const QString& path)
{
    return QJsonDocument::fromJson(outputOf("qpdf", {"--json=2", path}).toUtf8()).object();
}

/// The 1-based page that a link on the page leads to; 0 when there is none.
int linkTarget(const QJsonObject& json, int page)
{
    const QJsonObject objects = json["qpdf"].toArray().at(1).toObject();
    const auto resolved = [&objects](const QJsonValue& value) {
        const QJsonObject entry = objects[QStringLiteral("obj:") + value.toString()].toObject();
        return entry.isEmpty() ? value : entry["value"];
    };
    const QJsonArray pages = json["pages"].toArray();
    const QJsonObject first = resolved(pages.at(page - 1)["object"]).toObject();
    for (const QJsonValue annotation : resolved(first["/Annots"]).toArray()) {
        const QJsonObject link = resolved(annotation).toObject();
        if (link["/Subtype"].toString() != "/Link")
            continue;
        const QJsonArray target = resolved(link["/Dest"]).toArray();
        for (int i = 0; i < pages.size(); ++i)
            if (pages.at(i)["object"] == target.at(0))
                return i + 1;
    }
    return 0;
}

TEST_F(Merging, KeepsFormsLinksBookmarksAndLabelsOfEachInput)
{
    const QString a = file("a.pdf", wholeDocument("a"));
    add({a, file("b.pdf", wholeDocument("b")), pdf("plain.pdf", 1), a});
    ASSERT_THAT(merge(path("out.pdf")), HasOutcome("done"));
    ASSERT_TRUE(isSound(path("out.pdf")));
    const QJsonObject json = described(path("out.pdf"));

    QStringList bookmarks;
    for (const QJsonValue entry : json["outlines"].toArray())
        bookmarks << entry["title"].toString() + " on " + QString::number(entry["destpageposfrom1"].toInt());
    EXPECT_EQ(bookmarks, (QStringList{"a two on 2", "b two on 4"}));
    EXPECT_EQ(linkTarget(json, 1), 2);
    EXPECT_EQ(linkTarget(json, 3), 4);
    EXPECT_THAT(linkTarget(json, 6), testing::AnyOf(2, 7)) << "the same page in either copy";

    QSet<QString> names;
    QStringList fields;
    for (const QJsonValue field : json["acroform"]["fields"].toArray()) {
        names << field["fullname"].toString();
        fields << field["value"].toString() + " on " + QString::number(field["pageposfrom1"].toInt());
    }
    EXPECT_EQ(names.size(), 3) << "names that clash are renamed";
    EXPECT_EQ(fields, (QStringList{"u:a on 1", "u:b on 3", "u:a on 6"}));

    const QString labels = outputOf("mutool", {"show", path("out.pdf"), "trailer/Root/PageLabels"});
    EXPECT_EQ(labels.count("(a-)"), 2) << labels.toStdString();
    EXPECT_EQ(labels.count("(b-)"), 1) << labels.toStdString();
}

} // namespace

} // namespace folvane
