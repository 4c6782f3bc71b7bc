#include "shell/WindowTest.h"

#include "platform/files/writeFile.h"
#include "support/await.h"

#include <QMimeData>

namespace folvane {
namespace {

class Moving : public WindowTest {
protected:
    void dropPage(const QUuid& page, int onto)
    {
        QMimeData data;
        data.setText(page.toString(QUuid::WithoutBraces));
        EXPECT_TRUE(drop(grid().viewport(), pagePoint(onto), data));
    }
    /// The order of the pages, as their places before.
    QList<int> order(const OpenFilePtr& file, const QList<QUuid>& before)
    {
        QList<int> places;
        for (const QUuid& id : ids(file))
            places.append(int(before.indexOf(id)));
        return places;
    }
};

TEST_F(Moving, ADroppedPageLandsBeforeTheOneUnderIt)
{
    const OpenFilePtr file = openPages(5);
    const QList<QUuid> before = ids(file);
    dropPage(before[3], 1);
    EXPECT_EQ(order(file, before), (QList{0, 3, 1, 2, 4}));
    EXPECT_EQ(selected(file), QList<int>()) << "dragging a page does not select it";
    EXPECT_TRUE(file->isEdited);
}

TEST_F(Moving, ASelectedPageTakesTheSelectionAlongAndClosesItsGaps)
{
    const OpenFilePtr file = openPages(6);
    const QList<QUuid> before = ids(file);
    clickPage(5);
    clickPage(1, Qt::ControlModifier);
    clickPage(3, Qt::ControlModifier);
    dropPage(before[3], 0);
    EXPECT_EQ(order(file, before), (QList{1, 3, 5, 0, 2, 4}));
    EXPECT_EQ(selected(file), (QList{0, 1, 2}));
}

TEST_F(Moving, ADropOnTheOwnGroupOrOfAnotherDocumentsPageChangesNothing)
{
    const OpenFilePtr other = openPages(2, QStringLiteral("other"));
    const OpenFilePtr file = openPages(4);
    const QList<QUuid> before = ids(file);
    clickPage(1);
    clickPage(2, Qt::ControlModifier);
    dropPage(before[1], 2);
    dropPage(ids(other)[0], 1);
    EXPECT_EQ(ids(file), before);
    EXPECT_FALSE(file->isEdited);
}

TEST_F(Moving, TextThatIsNoPageIsNotTaken)
{
    openPages(2);
    QMimeData data;
    data.setText(QStringLiteral("a sentence"));
    EXPECT_FALSE(drop(grid().viewport(), pagePoint(0), data));
    data.setUrls({QUrl(QStringLiteral("https://example.org/a.pdf"))});
    EXPECT_FALSE(drop(grid().viewport(), pagePoint(0), data)) << "only files can be added";
}

TEST_F(Moving, DroppedFilesAreAddedAndSelected)
{
    const OpenFilePtr file = openPages(3);
    clickPage(0);
    QMimeData data;
    data.setUrls({makePdf(QStringLiteral("more.pdf"), 2)});
    EXPECT_TRUE(drop(grid().viewport(), pagePoint(2), data));
    EXPECT_TRUE(waitFor([&] { return file->pages.value().size() == 5; }));
    EXPECT_EQ(selected(file), (QList{1, 2})) << "after the selected page, wherever they were dropped";
    EXPECT_EQ(model.files.value().size(), 1);
}

TEST_F(Moving, FilesDroppedBesideThePagesOpen)
{
    openPages(1);
    QMimeData data;
    data.setUrls({makePdf(QStringLiteral("more.pdf"), 2)});
    EXPECT_TRUE(drop(&window, QPoint(40, window.height() / 2), data));
    EXPECT_TRUE(waitFor([&] { return model.files.value().size() == 2; }));
}

TEST_F(Moving, FilesThatCannotBeUsedAreToldOfWhereTheyWouldOpen)
{
    const OpenFilePtr file = openPages(1);
    const QUrl text = QUrl::fromLocalFile(folder.filePath(QStringLiteral("notes.txt")));
    writeFile(text, "notes");
    QMimeData data;
    data.setUrls({text});
    EXPECT_TRUE(drop(grid().viewport(), pagePoint(0), data));
    EXPECT_TRUE(drop(&window, QPoint(40, window.height() / 2), data));
    EXPECT_TRUE(waitFor([this] { return model.errorMessage.value().has_value(); }));
    EXPECT_EQ(model.errorMessage.value(), QStringLiteral("Folvane opens PDFs and images."));
    EXPECT_EQ(file->pages.value().size(), 1u);
}

struct KeysCase {
    const char* name;
    QList<int> selected;
    QList<Qt::Key> keys;
    QList<int> order;
    bool edits = true;
};

class AltKeys : public Moving, public testing::WithParamInterface<KeysCase> {};

TEST_P(AltKeys, CarryTheSelectedPages)
{
    const OpenFilePtr file = openPages(6);
    const QList<QUuid> before = ids(file);
    for (const int row : GetParam().selected)
        clickPage(row, Qt::ControlModifier);
    grid().setFocus();
    for (const Qt::Key pressed : GetParam().keys)
        key(pressed, Qt::AltModifier);
    EXPECT_EQ(order(file, before), GetParam().order);
    EXPECT_EQ(file->isEdited, GetParam().edits);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, AltKeys,
    testing::Values(KeysCase{"Right", {1}, {Qt::Key_Right}, {0, 2, 1, 3, 4, 5}},
                    KeysCase{"RightAndBack", {1}, {Qt::Key_Right, Qt::Key_Left}, {0, 1, 2, 3, 4, 5}},
                    KeysCase{"StopsAtTheFront", {0}, {Qt::Key_Left}, {0, 1, 2, 3, 4, 5}, false},
                    KeysCase{"StopsAtTheEnd", {5}, {Qt::Key_Right, Qt::Key_Down}, {0, 1, 2, 3, 4, 5}, false},
                    KeysCase{"AGroupClosesUp", {1, 4}, {Qt::Key_Right}, {0, 2, 1, 4, 3, 5}},
                    KeysCase{"ToTheFront", {3, 4}, {Qt::Key_Home}, {3, 4, 0, 1, 2, 5}},
                    KeysCase{"ToTheEnd", {0}, {Qt::Key_End}, {1, 2, 3, 4, 5, 0}},
                    KeysCase{"NothingSelectedTakesTheCurrentPage", {}, {Qt::Key_Right}, {1, 0, 2, 3, 4, 5}}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace folvane
