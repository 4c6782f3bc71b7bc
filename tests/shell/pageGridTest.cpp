#include "shell/WindowTest.h"

#include <QMimeData>

namespace folvane {
namespace {

constexpr auto ctrl = Qt::ControlModifier;
constexpr auto shift = Qt::ShiftModifier;

using Grid = WindowTest;

TEST_F(Grid, TheAnchorSurvivesASwitchOfDocumentsAndEndsWithTheView)
{
    const OpenFilePtr first = openPages(6, "first");
    clickPage(1);
    const OpenFilePtr second = openPages(6, "second");
    clickPage(3, shift);
    EXPECT_EQ(selectedRows(*second), (QList{3})) << "the anchor is a page of the other document";
    model.destination = Destination::file(first->id);
    EXPECT_EQ(selectedRows(*first), (QList{1})) << "the selection belongs to the document";
    model.destination = Destination::file(second->id);
    clickPage(5, shift);
    EXPECT_EQ(selectedRows(*second), (QList{3, 4, 5}))
        << "the fallback made a new anchor, which came back with it";
    model.destination = Destination();
    model.destination = Destination::file(second->id);
    clickPage(1, shift);
    EXPECT_EQ(selectedRows(*second), (QList{1})) << "another kind of place in between drops the anchor";
}

TEST_F(Grid, WhatAScreenReaderSelectsIsTheSelectionOfTheDocument)
{
    const OpenFilePtr file = openPages(4);
    QItemSelectionModel& mirror = *grid().selectionModel();
    clickPage(3);
    mirror.select(grid().model()->index(1, 0), QItemSelectionModel::Select);
    EXPECT_EQ(selectedRows(*file), (QList{1, 3}));
    model.deletePages(file, {file->pages.value()[0].id});
    EXPECT_EQ(selectedRows(*file), (QList{0, 2})) << "new rows deselect nothing";
    EXPECT_TRUE(mirror.isSelected(grid().model()->index(2, 0)));
    mirror.clearSelection();
    EXPECT_EQ(selectedRows(*file), QList<int>());
}

TEST_F(Grid, TakesNeitherOtherTextsNorFilesOfOtherMachines)
{
    openPages(2);
    QMimeData data;
    data.setText("a sentence");
    data.setUrls({QUrl("https://example.org/a.pdf")});
    QDragEnterEvent enter({100, 100}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(grid().viewport(), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(Grid, AltCarriesTheSelectedPagesOrTheCurrentOne)
{
    const OpenFilePtr file = openPages(6);
    hand.key(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(pageOrder(*file), (QList{1, 0, 2, 3, 4, 5})) << "the current one";
    hand.key(Qt::Key_Left, Qt::AltModifier);
    clickPage(1);
    clickPage(4, ctrl);
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Left})
        hand.key(key, Qt::AltModifier);
    EXPECT_EQ(pageOrder(*file), (QList{0, 2, 3, 1, 4, 5}));
    hand.key(Qt::Key_Home, Qt::AltModifier);
    hand.key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(pageOrder(*file), (QList{1, 4, 0, 2, 3, 5})) << "it stops at the front";
    hand.key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(pageOrder(*file), (QList{0, 2, 3, 5, 1, 4})) << "and at the end";
}

} // namespace
} // namespace folvane
