#include "documents/ModelTest.h"

namespace folvane {

namespace {

class PageEditing : public ModelTest {
protected:
    OpenFilePtr document(int pages) { return open({putPdf("a.pdf", pages)}); }
    QUuid id(const OpenFile& file, int position) const { return *at(file, {position}).begin(); }
};

} // namespace

TEST_F(PageEditing, QuickTurnsLandOneAfterTheOtherByTheSizeOfThePage)
{
    const OpenFilePtr file = document(3);
    std::vector<PageItem> stamped = file->pages;
    stamped[0].stamps = {{QUuid(), QUuid(), {0.25, 0.1}, 0.2, 0}};
    file->pages = stamped;
    for (int i = 0; i < 5; ++i) // all before the first has landed
        model->turn(file, at(*file, {1, 2}), true);
    model->deletePages(file, at(*file, {2}));
    drainEngine();
    EXPECT_EQ(order(*file), "a-1 a-3");
    const PageItem page = file->pages.value()[0];
    EXPECT_EQ(page.turn, 90);
    EXPECT_NEAR(page.stamps[0].center.x(), 0.9, 1e-12);
    EXPECT_NEAR(page.stamps[0].center.y(), 0.25, 1e-12);
    EXPECT_NEAR(page.stamps[0].width, 0.15, 1e-12);
}

TEST_F(PageEditing, DeletesPagesAndTheirSelectionButNotAll)
{
    const OpenFilePtr file = document(3);
    for (const QSet<QUuid>& pages : {file->targetIDs(), QSet<QUuid>()}) {
        model->errorMessage = std::nullopt;
        model->deletePages(file, pages);
        EXPECT_EQ(error(), "A file needs at least one page. To get rid of it, close the file.");
    }
    EXPECT_FALSE(file->isEdited);
    file->selection = at(*file, {1, 2});
    const QSet<QUuid> kept = at(*file, {1});
    model->deletePages(file, at(*file, {2}));
    EXPECT_EQ(order(*file), "a-1 a-3");
    EXPECT_EQ(file->selection.value(), kept);
    EXPECT_TRUE(file->isEdited);
}

TEST_F(PageEditing, DropsMoveTheSelectionOnlyWhenThePageIsInIt)
{
    const OpenFilePtr file = document(5);
    const auto text = [&](int position) {
        return QStringList{id(*file, position).toString(QUuid::WithoutBraces)};
    };
    model->move(file, at(*file, {1, 2}), id(*file, 2));
    EXPECT_FALSE(file->isEdited) << "nothing moved";
    file->selection = at(*file, {1, 4});
    const QSet<QUuid> selected = file->selection;
    EXPECT_TRUE(model->dropPages(file, text(4), id(*file, 3)));
    EXPECT_TRUE(file->isEdited);
    EXPECT_EQ(order(*file), "a-2 a-1 a-4 a-3 a-5");
    EXPECT_TRUE(model->dropPages(file, text(5), id(*file, 1)));
    EXPECT_EQ(order(*file), "a-5 a-2 a-1 a-4 a-3");
    EXPECT_EQ(file->selection.value(), selected);
    EXPECT_FALSE(model->dropPages(file, {}, id(*file, 1)));
    EXPECT_FALSE(model->dropPages(file, {"text"}, id(*file, 1)));
    const QString foreign = QUuid::createUuid().toString(QUuid::WithoutBraces);
    EXPECT_TRUE(model->dropPages(file, {foreign}, id(*file, 1))); // of another document
    EXPECT_EQ(order(*file), "a-5 a-2 a-1 a-4 a-3");
}

TEST_F(PageEditing, InsertsBehindTheLastSelectedPageInTheOrderGiven)
{
    const OpenFilePtr file = document(3);
    file->selection = at(*file, {1, 2});
    await(model->insertPages(file, {put("bad.pdf", "x"), put("bad.png", "x")}));
    EXPECT_EQ(error(), damaged.arg("bad.pdf"));
    EXPECT_FALSE(file->isEdited);
    EXPECT_EQ(file->selection.value(), at(*file, {1, 2}));
    answerPasswords({{"locked.pdf", {"x"}}});
    await(model->insertPages(file, {putPicture("9.png"), putLockedPdf("locked.pdf", 2, "x"), file->url}));
    EXPECT_EQ(order(*file), "a-1 a-2 9-1 locked-1 locked-2 a-1 a-2 a-3 a-3");
    EXPECT_EQ(file->selection.value(), at(*file, {3, 4, 5, 6, 7, 8}));
    EXPECT_NE(id(*file, 1), id(*file, 6)) << "its own page again has an id of its own";
    EXPECT_EQ(file->password, std::nullopt);
    EXPECT_TRUE(file->isEdited);
}

} // namespace folvane
