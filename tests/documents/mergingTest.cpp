#include "documents/ModelTest.h"

#include "documents/buildPlans.h"
#include "documents/pages/pageLists.h"

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
        saveTo(name, [this] { return model->mergeFiles(); });
    }
};

} // namespace

TEST_F(Merging, JoinsDocumentsAsTheyWereAndFilesWhole)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 4)});
    model->turn(file, at(*file, {1}), true);
    model->move(file, at(*file, {4}), *at(*file, {1}).begin());
    model->merge.add(*file);
    const std::vector<MergeItem> snapshot = model->merge.items.value();
    model->turn(file, at(*file, {2}), false);
    model->deletePages(file, at(*file, {1}));
    EXPECT_EQ(model->merge.items.value(), snapshot) << "later edits do not reach the list";

    answerPasswords({{"b.pdf", {"wrong", "right"}}});
    add({putPicture("p.png"), putLockedPdf("b.pdf", 2, "right"), url("b.pdf")});
    EXPECT_EQ(rows(), "a:4 p:1 b:2 b:2");
    EXPECT_EQ(model->merge.pageCount(), 9);
    mergeTo("out.pdf");
    EXPECT_EQ(std::get<SavePanel>(panels.asked.value(0)).name, "a (merged).pdf");
    EXPECT_EQ(textsIn(path("out.pdf")), "a-4 a-1 a-2 a-3 b-1 b-2 b-1 b-2") << "without a password";
    EXPECT_EQ(rows(), "a:4 p:1 b:2 b:2") << "the list stays";
}

TEST_F(Merging, LeavesOutWhatItCannotRead)
{
    answerPasswords({});
    add({put("notes.txt", "text"), url("folder"), put("broken.png", "no picture"), url("gone.jpg")});
    EXPECT_EQ(error(), "");
    add({put("broken.pdf", "no pdf"), putLockedPdf("given up.pdf", 1, "x"), putPdf("a.pdf", 1)});
    EXPECT_EQ(error(), damaged.arg("broken.pdf"));
    EXPECT_EQ(rows(), "a:1");
    await(model->mergeFiles());
    EXPECT_TRUE(panels.asked.isEmpty()) << "one row is nothing to merge";
}

TEST_F(Merging, KeepsSourcesOfClosedDocumentsUntilTheirRowGoes)
{
    answerPasswords({{"a.pdf", {"right"}}});
    const OpenFilePtr file = open({putLockedPdf("a.pdf", 2, "right")});
    model->merge.add(*file);
    model->close(file);
    EXPECT_TRUE(isHeld(url("a.pdf")));
    add({putPdf("b.pdf", 1)});
    mergeTo("a.pdf");
    EXPECT_EQ(error(), inUse.arg("a.pdf"));
    model->merge.remove(model->merge.items.value()[0].id);
    EXPECT_FALSE(isHeld(url("a.pdf")));
    EXPECT_FALSE(model->isInUse(url("a.pdf")));
}

TEST(MergePlans, KeepEachRowADocumentOfItsOwn)
{
    const std::vector<PageItem> pages = pagesOf(QUrl("file:///a.pdf"), 2);
    const BuildPlan plan =
        mergePlan(StampLibrary({}), {{{}, "a", pages, {}}, {{}, "b", {pages[1]}, {}}, {{}, "a", pages, {}}});
    EXPECT_EQ(plan.documentStarts, std::set<size_t>({0, 2, 3}));
    EXPECT_EQ(idsOf(plan.pages).size(), 5) << "no page stands there twice";
    EXPECT_EQ(plan.pages[2].source.index, 1);
}

TEST(MergeModels, MoveRowsAndKeepTheOrderOfTheRest)
{
    using Row = std::tuple<QSet<int>, int, QString>;
    for (const auto& [from, to, want] : QList{
             Row{{3}, 1, "adbce"}, Row{{1}, 4, "acdbe"}, Row{{4}, 0, "eabcd"}, Row{{0}, 5, "bcdea"},
             Row{{2}, 2, "abcde"}, Row{{2}, 3, "abcde"}, Row{{0, 3}, 2, "badce"}, Row{{2, 4}, 1, "acebd"}}) {
        MergeModel merge;
        for (const char* name : {"a", "b", "c", "d", "e"})
            merge.add(QUrl::fromLocalFile(QString(name) + ".pdf"), pagesOf({}, 1));
        merge.move(from, to);
        QString order;
        for (const MergeItem& item : merge.items.value())
            order += item.name;
        EXPECT_EQ(order, want);
    }
}

} // namespace folvane
