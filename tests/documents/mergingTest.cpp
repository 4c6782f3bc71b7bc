#include "documents/ModelTest.h"

#include <QDir>
#include <QFile>

namespace folvane {

namespace {

class Merging : public ModelTest {
protected:
    /// "a:3 b:1", names and numbers of pages.
    QString rows() const
    {
        QStringList rows;
        for (const MergeItem& item : model->merge.items.value())
            rows << item.name + ':' + QString::number(item.pages.size());
        return rows.join(' ');
    }
    void add(const QList<QUrl>& urls) { await(model->addToMerge(urls)); }
    void mergeTo(const QString& name)
    {
        panels.saveAnswers << url(name);
        await(model->mergeFiles());
        runUntilIdle();
    }
};

} // namespace

TEST_F(Merging, JoinsDocumentsAsTheyWereAndFilesWhole)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 4)});
    model->turn(file, at(*file, {1}), true);
    runUntil([&file] { return file->pages.value()[0].turn == 90; });
    model->deletePages(file, at(*file, {2}));
    model->move(file, at(*file, {3}), *at(*file, {1}).begin());
    model->merge.add(*file);
    const std::vector<MergeItem> snapshot = model->merge.items.value();

    model->turn(file, at(*file, {2}), false);
    runUntil([&file] { return file->pages.value()[1].turn == 0; });
    model->deletePages(file, at(*file, {1}));
    EXPECT_EQ(model->merge.items.value(), snapshot) << "later edits do not reach the list";
    EXPECT_EQ(snapshot[0].pages[1].turn, 90);

    add({putPicture("p.png"), putPdf("b.pdf", 2)});
    EXPECT_EQ(rows(), "a:3 p:1 b:2");
    EXPECT_EQ(model->merge.pageCount(), 6);
    mergeTo("out.pdf");
    EXPECT_EQ(std::get<SavePanel>(panels.asked.value(0)).name, "a (merged).pdf");
    EXPECT_EQ(textsIn(path("out.pdf")), "a-4 a-1 a-3 b-1 b-2");
    EXPECT_EQ(complaintsAbout(path("out.pdf")), "");
    const OpenFilePtr merged = open({url("out.pdf")});
    ASSERT_EQ(merged->pages.value().size(), 6U);
    const QSizeF turned = await(engine.displaySize(merged->pages.value()[1].source, 0));
    EXPECT_EQ(turned, QSizeF(800, 600));
    EXPECT_EQ(rows(), "a:3 p:1 b:2") << "the list stays";
    EXPECT_EQ(model->toast.value(), Toast({"Saved “out.pdf”", url("out.pdf")}));
}

TEST_F(Merging, TakesTheSameFileAsOftenAsItIsAdded)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 2)});
    model->merge.add(*file);
    model->merge.add(*file);
    add({url("a.pdf"), url("a.pdf")});
    QSet<QUuid> ids;
    for (const MergeItem& item : model->merge.items.value()) {
        ids << item.id;
        for (const PageItem& page : item.pages)
            ids << page.id;
    }
    EXPECT_EQ(ids.size(), 4 + 8);
    mergeTo("out.pdf");
    EXPECT_EQ(textsIn(path("out.pdf")), "a-1 a-2 a-1 a-2 a-1 a-2 a-1 a-2");
}

TEST_F(Merging, AsksForPasswordsAndLocksNothing)
{
    answerPasswords({{"a.pdf", {"wrong", "right"}}});
    add({putLockedPdf("a.pdf", 1, "right"), putLockedPdf("left out.pdf", 1, "x"), putPdf("c.pdf", 1)});
    EXPECT_EQ(questions, QStringList({"a.pdf", "a.pdf!", "left out.pdf"}));
    EXPECT_EQ(rows(), "a:1 c:1");
    EXPECT_EQ(error(), "");
    mergeTo("out.pdf");
    EXPECT_FALSE(needsPassword(path("out.pdf")));
    EXPECT_EQ(textsIn(path("out.pdf")), "a-1 c-1");
}

TEST_F(Merging, LeavesOutWhatItCannotRead)
{
    put("notes.txt", "text");
    put("broken.png", "no picture");
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("folder"));
    add({url("notes.txt"), url("folder"), url("broken.png"), url("gone.jpg")});
    EXPECT_EQ(error(), "");
    add({put("broken.pdf", "no pdf"), putPdf("a.pdf", 1)});
    EXPECT_EQ(error(), "“broken.pdf” can't be opened. It may be damaged or not a PDF.");
    EXPECT_EQ(rows(), "a:1");
}

TEST_F(Merging, OfOneFileDoesNothing)
{
    add({putPdf("a.pdf", 1)});
    await(model->mergeFiles());
    EXPECT_TRUE(panels.asked.isEmpty());
    EXPECT_FALSE(model->busy.value());
}

TEST_F(Merging, RefusesToReplaceWhatItReads)
{
    add({putPdf("a.pdf", 1), putPdf("b.pdf", 1)});
    const QByteArray before = get("b.pdf");
    mergeTo("b.pdf");
    EXPECT_EQ(error(), "“b.pdf” is open in Folvane, so it can't be replaced. Save under another name.");
    EXPECT_EQ(get("b.pdf"), before);
    model->errorMessage = std::nullopt;
    const OpenFilePtr file = open({putPdf("c.pdf", 1)});
    panels.saveAnswers << url("a.pdf");
    await(model->saveAs(file));
    EXPECT_EQ(error(), "“a.pdf” is open in Folvane, so it can't be replaced. Save under another name.");
    model->merge.remove(model->merge.items.value()[1].id);
    EXPECT_FALSE(model->isInUse(url("b.pdf")));
}

TEST_F(Merging, KeepsSourcesOfClosedDocumentsUntilTheirRowGoes)
{
    answerPasswords({{"a.pdf", {"right"}}});
    const OpenFilePtr file = open({putLockedPdf("a.pdf", 2, "right")});
    model->merge.add(*file);
    add({putPdf("b.pdf", 1)});
    model->close(file);
    drainEngine();
    EXPECT_TRUE(isHeld(url("a.pdf")));
    mergeTo("out.pdf");
    EXPECT_EQ(textsIn(path("out.pdf")), "a-1 a-2 b-1");
    model->merge.clear();
    drainEngine();
    EXPECT_FALSE(isHeld(url("a.pdf")));
}

TEST_F(Merging, AFullDiskIsTold)
{
    ASSERT_TRUE(QFile::link("/dev/full", path("full.pdf")));
    add({putPdf("a.pdf", 1), putPdf("b.pdf", 1)});
    mergeTo("full.pdf");
    EXPECT_EQ(error(), "No space left on device");
    EXPECT_EQ(rows(), "a:1 b:1");
}

TEST_F(Merging, ASourceThatWasCutIsTold)
{
    add({putPdf("a.pdf", 1), putPdf("b.pdf", 1)});
    ASSERT_TRUE(QFile::resize(path("b.pdf"), 100));
    mergeTo("out.pdf");
    EXPECT_EQ(error(), "A page of this file can't be read anymore. Open the file again.");
    EXPECT_FALSE(QFile::exists(path("out.pdf")));
}

struct MoveCase {
    const char* name;
    QSet<int> from;
    int to;
    const char* want;
};

class MergeMoves : public testing::TestWithParam<MoveCase> {};

TEST_P(MergeMoves, KeepTheOrderOfTheRest)
{
    MergeModel merge;
    for (const char* name : {"a", "b", "c", "d", "e"})
        merge.add(QUrl::fromLocalFile(QString(name) + ".pdf"), 1);
    merge.move(GetParam().from, GetParam().to);
    QString order;
    for (const MergeItem& item : merge.items.value())
        order += item.name;
    EXPECT_EQ(order, GetParam().want);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, MergeMoves,
    testing::Values(MoveCase{"Up", {3}, 1, "adbce"}, MoveCase{"Down", {1}, 4, "acdbe"},
                    MoveCase{"ToTheFront", {4}, 0, "eabcd"}, MoveCase{"ToTheEnd", {0}, 5, "bcdea"},
                    MoveCase{"BeforeItself", {2}, 2, "abcde"}, MoveCase{"BehindItself", {2}, 3, "abcde"},
                    MoveCase{"SeveralDown", {0, 3}, 2, "badce"}, MoveCase{"SeveralUp", {2, 4}, 1, "acebd"}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace folvane
