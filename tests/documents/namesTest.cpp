#include "documents/ModelTest.h"
#include "documents/fileNames.h"
#include "documents/pages/pageLists.h"
#include "documents/suggestedNames.h"

namespace folvane {

namespace {

OpenFile document(const QString& path, int pages, OpenFile::Origin origin = OpenFile::Origin::Pdf)
{
    const QUrl url = QUrl::fromLocalFile(path);
    return OpenFile(url, origin, pagesOf(url, pages));
}

} // namespace

TEST(Names, ComeFromThePath)
{
    for (const auto& [path, last, base] : QList<std::tuple<QString, QString, QString>>{
             {"/a/report.pdf", "report.pdf", "report"},
             {"/a/b.tar.pdf", "b.tar.pdf", "b.tar"},
             {"/a/report", "report", "report"},
             {"/a/.pdf", ".pdf", ".pdf"},
             {"/a/b.pdf/", "b.pdf", "b"},
             {"/a/50% #1?.pdf", "50% #1?.pdf", "50% #1?"},
         }) {
        EXPECT_EQ(lastPathComponent(QUrl::fromLocalFile(path)), last);
        EXPECT_EQ(nameWithoutEnding(QUrl::fromLocalFile(path)), base);
    }
    EXPECT_EQ(folderOf(QUrl("file:///a/b/c.pdf")), QUrl("file:///a/b"));
    EXPECT_EQ(folderOf(QUrl("file:///c.pdf")), QUrl("file:///"));
    EXPECT_EQ(withPdfEnding("a.pdf"), "a.pdf");
    EXPECT_EQ(withPdfEnding("a.PDF"), "a.PDF.pdf");
    EXPECT_EQ(numberedFile(QUrl("file:///a"), {"b.c", "png"}, 1), QUrl("file:///a/b.c.png"));
    EXPECT_EQ(numberedFile(QUrl("file:///a"), {":b", "png"}, 3), QUrl("file:///a/:b 3.png"));
}

TEST(SuggestedNames, TellWhatIsNew)
{
    OpenFile report = document("/a/report.pdf", 2);
    EXPECT_EQ(suggestedName(report), "report (edited)");
    std::vector<PageItem> pages = report.pages;
    pages[1].stamps.emplace_back();
    report.pages = pages;
    EXPECT_EQ(suggestedName(report), "report (signed)");
    EXPECT_EQ(suggestedName(document("/a/scan.png", 1, OpenFile::Origin::Pictures)), "scan");
    OpenFile odd = document("/a/%1.pdf", 12);
    EXPECT_EQ(suggestedExtractName(odd), "%1 (pages 1-12)");
    odd.selection = at(odd, {5, 1, 3, 2});
    EXPECT_EQ(suggestedExtractName(odd), "%1 (pages 1-3, 5)");
}

TEST(SuggestedNames, FitIntoAFileName)
{
    QList<int> odd;
    for (int page = 1; page < 1000; page += 2)
        odd.append(page);
    OpenFile report = document("/a/Überblick.pdf", 1000);
    report.selection = at(report, odd);
    const QString name = suggestedExtractName(report);
    EXPECT_TRUE(name.startsWith("Überblick (pages 1, 3, 5, ")) << name.toStdString();
    EXPECT_TRUE(name.endsWith(", …)")) << name.toStdString();
    EXPECT_GT(name.toUtf8().size(), 235);

    OpenFile wordy =
        document("/a/" + QString("e\u0301").repeated(83) + ".pdf", 1000); // 249 bytes, 3 a letter
    wordy.selection = at(wordy, odd);
    for (const QString& suggested : {name, suggestedName(wordy), suggestedExtractName(wordy)})
        EXPECT_LE(withPdfEnding(suggested + " 9999").toUtf8().size(), 255);
    EXPECT_EQ(suggestedName(wordy), QString("e\u0301").repeated(79) + " (edited)")
        << "no letter loses its accent";
}

TEST(Selection, OfPagesThatAreGoneCountsForNothing)
{
    OpenFile file = document("/a/report.pdf", 3);
    EXPECT_EQ(file.selectedPages(), file.pages.value());
    file.selection = QSet<QUuid>{QUuid::createUuid()};
    EXPECT_EQ(file.selectedPages(), file.pages.value());
    file.selection = file.selection.value() + QSet<QUuid>{file.pages.value()[1].id};
    EXPECT_EQ(file.selectedPages(), std::vector{file.pages.value()[1]});
    EXPECT_EQ(file.selectedPositions(), QList<int>{2});
}

} // namespace folvane
