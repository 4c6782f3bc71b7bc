#include "shell/WindowTest.h"

#include <QMenu>
#include <QMimeData>

namespace folvane {
namespace {

constexpr auto ctrl = Qt::ControlModifier;
constexpr auto shift = Qt::ShiftModifier;

class Grid : public WindowTest {
protected:
    /// The order of the pages, as their places in their file.
    static QList<int> order(const OpenFilePtr& file)
    {
        QList<int> places;
        for (const PageItem& page : file->pages.value())
            places.append(page.source.index);
        return places;
    }
    void choose(int row, const QString& title)
    {
        hand.click(pagePoint(row), {}, Qt::RightButton);
        for (QAction* action : hand.top().actions())
            if (action->text().remove(u'&') == title)
                action->trigger();
        hand.key(Qt::Key_Escape);
    }
    void dragTo(int row, int onto)
    {
        hand.drag(pagePoint(row), pagePoint(onto), [] {});
    }
};

TEST_F(Grid, TheAnchorSurvivesASwitchOfDocumentsAndEndsWithTheView)
{
    const OpenFilePtr first = openPages(6, QStringLiteral("first"));
    clickPage(1);
    const OpenFilePtr second = openPages(6, QStringLiteral("second"));
    clickPage(3, shift);
    EXPECT_EQ(selected(second), (QList{3})) << "the anchor is a page of the other document";
    model.destination = Destination::file(first->id);
    EXPECT_EQ(selected(first), (QList{1})) << "the selection belongs to the document";
    model.destination = Destination::file(second->id);
    clickPage(5, shift);
    EXPECT_EQ(selected(second), (QList{3, 4, 5}))
        << "the fallback made a new anchor, which came back with it";
    model.destination = Destination();
    model.destination = Destination::file(second->id);
    clickPage(1, shift);
    EXPECT_EQ(selected(second), (QList{1})) << "another kind of place in between drops the anchor";
}

TEST_F(Grid, KeysWalkSelectAndDelete)
{
    const OpenFilePtr file = openPages(6);
    hand.key(Qt::Key_Right);
    hand.key(Qt::Key_Right, shift);
    EXPECT_EQ(selected(file), (QList{1, 2}));
    hand.key(Qt::Key_Right, ctrl);
    hand.key(Qt::Key_Right, ctrl);
    hand.key(Qt::Key_Space);
    EXPECT_EQ(selected(file), (QList{1, 2, 4})) << "without a mouse, pages that do not adjoin";
    hand.key(Qt::Key_Delete);
    EXPECT_EQ(order(file), (QList{0, 3, 5}));
    EXPECT_EQ(selected(file), QList<int>());
    hand.key(Qt::Key_A, ctrl);
    EXPECT_EQ(selected(file).size(), 3);
    hand.key(Qt::Key_Escape);
    EXPECT_EQ(selected(file), QList<int>());
}

TEST_F(Grid, WhatAScreenReaderSelectsIsTheSelectionOfTheDocument)
{
    const OpenFilePtr file = openPages(4);
    QItemSelectionModel& mirror = *grid().selectionModel();
    clickPage(3);
    mirror.select(grid().model()->index(1, 0), QItemSelectionModel::Select);
    EXPECT_EQ(selected(file), (QList{1, 3}));
    model.deletePages(file, {file->pages.value()[0].id});
    EXPECT_EQ(selected(file), (QList{0, 2})) << "new rows deselect nothing";
    EXPECT_TRUE(mirror.isSelected(grid().model()->index(2, 0)));
    mirror.clearSelection();
    EXPECT_EQ(selected(file), QList<int>());
}

TEST_F(Grid, TheMenuOfAPageTakesItOrTheSelectionThatItBelongsTo)
{
    const OpenFilePtr file = openPages(4);
    clickPage(0);
    clickPage(1, ctrl);
    choose(1, QStringLiteral("Rotate Left"));
    EXPECT_TRUE(waitFor([&] { return file->pages.value()[0].turn == 270; }));
    choose(2, QStringLiteral("Extract…"));
    EXPECT_EQ(selected(file), (QList{2})) << "extracting selects what it extracts";
    choose(3, QStringLiteral("Delete"));
    EXPECT_EQ(order(file), (QList{0, 1, 2}));
}

TEST_F(Grid, DraggedPagesLandBeforeTheOneUnderThem)
{
    const OpenFilePtr file = openPages(6);
    dragTo(3, 1);
    EXPECT_EQ(order(file), (QList{0, 3, 1, 2, 4, 5}));
    EXPECT_EQ(selected(file), QList<int>()) << "dragging a page does not select it";
    clickPage(5);
    clickPage(1, ctrl);
    dragTo(5, 1);
    EXPECT_EQ(order(file), (QList{0, 3, 1, 2, 4, 5})) << "on a page of its own a group stays";
    dragTo(5, 0);
    EXPECT_EQ(order(file), (QList{3, 5, 0, 1, 2, 4}));
}

TEST_F(Grid, FilesAreAddedToThePagesAndOpenBesideThem)
{
    const OpenFilePtr file = openPages(3);
    clickPage(0);
    const QUrl more = makePdf(QStringLiteral("more.pdf"), 2);
    hand.dragFiles({more}, pagePoint(2), [] {});
    EXPECT_TRUE(waitFor([&] { return file->pages.value().size() == 5; }));
    EXPECT_EQ(selected(file), (QList{1, 2})) << "after the selected page, wherever they were dropped";
    hand.dragFiles({more}, window.mapToGlobal(QPoint(40, window.height() / 2)), [] {});
    EXPECT_TRUE(waitFor([&] { return model.files.value().size() == 2; }));
}

TEST_F(Grid, TakesNeitherOtherTextsNorFilesOfOtherMachines)
{
    openPages(2);
    for (const bool isFile : {false, true}) {
        QMimeData data;
        data.setText(QStringLiteral("a sentence"));
        if (isFile)
            data.setUrls({QUrl(QStringLiteral("https://example.org/a.pdf"))});
        QDragEnterEvent enter({100, 100}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(grid().viewport(), &enter);
        EXPECT_FALSE(enter.isAccepted());
    }
}

TEST_F(Grid, AltCarriesTheSelectedPagesOrTheCurrentOne)
{
    const OpenFilePtr file = openPages(6);
    hand.key(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(order(file), (QList{1, 0, 2, 3, 4, 5})) << "the current one";
    hand.key(Qt::Key_Left, Qt::AltModifier);
    clickPage(1);
    clickPage(4, ctrl);
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Left})
        hand.key(key, Qt::AltModifier);
    EXPECT_EQ(order(file), (QList{0, 2, 3, 1, 4, 5}));
    hand.key(Qt::Key_Home, Qt::AltModifier);
    hand.key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(order(file), (QList{1, 4, 0, 2, 3, 5})) << "it stops at the front";
    hand.key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(order(file), (QList{0, 2, 3, 5, 1, 4})) << "and at the end";
}

} // namespace
} // namespace folvane
