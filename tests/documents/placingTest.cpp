#include "documents/ModelTest.h"

namespace folvane {
namespace {

class Placing : public ModelTest {
protected:
    StampRecord record(qint64 width, qint64 height)
    {
        return *model->stamps.add({"no picture", width, height}, {});
    }
    QUuid page(int position) const { return *at(*shown(), {position}).begin(); }
    const std::vector<StampPlacement>& stamps(int position) const
    {
        return shown()->pages.value()[size_t(position - 1)].stamps;
    }
};

TEST_F(Placing, StepsAsideAndStartsOverAfterFive)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 1)});
    const StampRecord signature = record(320, 200), stamp = record(319, 200);
    for (int n = 0; n < 6; ++n)
        EXPECT_EQ(model->place(n == 1 ? stamp : signature, file, page(1)), stamps(1).back());
    EXPECT_EQ(stamps(1)[0].center, QPointF(0.5, 0.62));
    EXPECT_EQ(stamps(1)[1].center, QPointF(0.54, 0.66));
    EXPECT_EQ(stamps(1)[5].center, QPointF(0.5, 0.62));
    EXPECT_EQ(stamps(1)[0].width, 0.34);
    EXPECT_EQ(stamps(1)[1].width, 0.24);
    EXPECT_TRUE(file->isEdited);
}

TEST_F(Placing, ChangesOnlyWhatIsThere)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 1)});
    const StampRecord stamp = record(1, 1);
    EXPECT_FALSE(model->place(stamp, file, QUuid::createUuid()));
    StampPlacement moved = *model->place(stamp, file, page(1));
    file->isEdited = false;
    model->update(StampPlacement(), file, page(1));
    model->update(moved, file, QUuid::createUuid());
    model->remove(moved.id, file, QUuid::createUuid());
    EXPECT_FALSE(file->isEdited);
    moved.rotation = 45;
    model->update(moved, file, page(1));
    EXPECT_EQ(stamps(1), std::vector{moved});
    model->remove(moved.id, file, page(1));
    EXPECT_TRUE(stamps(1).empty() && file->isEdited);
}

TEST_F(Placing, CopiesToAllOtherPages)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 3)});
    StampPlacement placed = *model->place(record(1, 1), file, page(2));
    model->addToAllPages(placed, file, page(2));
    EXPECT_EQ(model->toast.value()->text, "Added to all 3 pages");
    EXPECT_EQ(stamps(2).size(), 1U);
    EXPECT_NE(stamps(1)[0].id, stamps(3)[0].id);
    placed.id = stamps(3)[0].id;
    EXPECT_EQ(stamps(3), std::vector{placed});
}

TEST_F(Placing, ADeletedStampLeavesAllPages)
{
    const OpenFilePtr plain = open({putPdf("plain.pdf", 1)}), file = open({putPdf("a.pdf", 2)});
    const StampRecord kept = record(1, 1), deleted = record(2, 1);
    model->place(kept, file, page(2));
    model->place(deleted, file, page(2));
    file->isEdited = false;
    model->deleteStamp(deleted.id);
    EXPECT_EQ(stamps(2).size(), 1U);
    EXPECT_TRUE(file->isEdited);
    EXPECT_FALSE(plain->isEdited);
    EXPECT_TRUE(model->stamps.record(kept.id) && !model->stamps.record(deleted.id));
}

} // namespace
} // namespace folvane
