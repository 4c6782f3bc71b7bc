#include "tour/steps.h"

#include <QApplication>
#include <QMenuBar>
#include <QScrollBar>

namespace folvane {

namespace {

/// To the end of a document of any length in one go, with the pointer at rest near the edge.
void dragFar(Tour& tour)
{
    const OpenFilePtr file = tour.openSample("Archive.pdf", tour.options.manyPages);
    const QScrollBar& bar = *tour.grid().verticalScrollBar();
    const QWidget& pages = *tour.grid().viewport();
    const QPoint edge = pages.mapToGlobal(pages.rect().bottomRight() - QPoint(80, 3));
    tour.hand.drag(tour.pagePoint(0), edge, [&] {
        waitUntil("The end of the document", [&bar] { return bar.value() == bar.maximum(); });
        tour.picture("dragging-to-the-end");
    });
    Tour::check(pageOrder(*file).last() == 0, "the first page has become the last");
    Tour::check(file->selection.value().isEmpty(), "dragging a page does not select it");
}

void closeMenu(Tour& tour)
{
    while (QApplication::activePopupWidget())
        tour.keys({Qt::Key_Escape});
}

} // namespace

void showSelecting(Tour& tour)
{
    const OpenFilePtr file = tour.openSample("Annual report.pdf", 12, Paper::Mixed);
    Hand& hand = tour.hand;
    hand.click(tour.pagePoint(1));
    hand.click(tour.pagePoint(3), Qt::ShiftModifier);
    hand.click(tour.pagePoint(5), Qt::ControlModifier);
    tour.picture("selection");

    tour.press("Rotate Right");
    waitUntil("The turning of the selected pages", [&file] { return file->pages.value()[5].turn == 90; });
    tour.picture("selection-turned");

    tour.press("Delete Pages");
    hand.key(Qt::Key_A, Qt::ControlModifier);
    Tour::check(selectedRows(*file).size() == 8, "Ctrl+A selects all pages");
    tour.picture("selection-of-all-after-deleting");

    hand.click(tour.pagePoint(0));
    hand.key(Qt::Key_Escape);
    Tour::check(selectedRows(*file).isEmpty(), "Escape deselects all");
    hand.key(Qt::Key_Right);
    hand.key(Qt::Key_Right, Qt::ShiftModifier);
    Tour::check(selectedRows(*file) == QList{1, 2}, "arrow keys select pages 2 and 3");
    tour.picture("selection-by-keyboard");

    hand.key(Qt::Key_Right, Qt::ControlModifier);
    hand.key(Qt::Key_Right, Qt::ControlModifier);
    tour.keys({Qt::Key_Space});
    Tour::check(selectedRows(*file) == QList{1, 2, 4}, "keys select pages that do not adjoin");
    tour.keys({Qt::Key_Delete});
    Tour::check(pageOrder(*file) == QList{0, 7, 9, 10, 11}, "Delete deletes them");
}

void showDragging(Tour& tour)
{
    const OpenFilePtr file = tour.openSample("Annual report.pdf", 12, Paper::Mixed);
    Hand& hand = tour.hand;
    tour.picture("before-dragging");
    tour.select({0, 1, 3});
    hand.drag(tour.pagePoint(1), tour.pagePoint(6), [&tour] { tour.picture("dragging-three-pages"); });
    Tour::check(pageOrder(*file) == QList{2, 4, 5, 0, 1, 3, 6, 7, 8, 9, 10, 11},
                "the dragged pages stand before page 7");
    tour.picture("after-dragging");

    const std::vector<PageItem> before = file->pages.value();
    hand.drag(tour.pagePoint(0), tour.pagePoint(5), [] {}, Hand::End::Cancel);
    Tour::check(file->pages.value() == before, "a drag that is given up moves nothing");

    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_End, Qt::Key_Home})
        hand.key(key, Qt::AltModifier);
    const QList<QUrl> files{makePicture(tour.path("Hills.png")),
                            tour.sample("Letter.pdf", 1, Paper::Upright, "Letter")};
    hand.dragFiles(files, tour.pagePoint(2), [&tour] { tour.picture("files-over-pages"); });
    waitUntil("The coming of the dropped pages", [&file] { return file->pages.value().size() == 14; });
    tour.picture("files-dropped-on-pages");
    Tour::check(selectedRows(*file) == QList{3, 4},
                "files go behind the selected pages, wherever they were dropped");
    Tour::check(tour.model.files.value().size() == 1, "files dropped on pages open no document");
    hand.key(Qt::Key_Escape);
    hand.dragFiles(
        files, tour.pagePoint(2), [&tour] { tour.picture("files-over-pages-without-selection"); },
        Hand::End::Cancel);
    dragFar(tour);
    hand.dragFiles({files.last()}, hand.placeOf("Home").center(), [] {});
    waitUntil("The opening beside the others", [&tour] { return tour.model.files.value().size() == 3; });
}

void showMenus(Tour& tour)
{
    const OpenFilePtr file = tour.openSample("Annual report.pdf", 12);
    for (const QAction* menu : tour.window.menuBar()->actions()) {
        const QString name = menu->text().remove(u'&');
        tour.press(name);
        tour.picture("menu-" + name.toLower());
        closeMenu(tour);
    }
    tour.hand.key(Qt::Key_P, Qt::AltModifier);
    Tour::check(QApplication::activePopupWidget(), "Alt and a letter open a menu");
    tour.picture("menu-pages-by-keyboard");
    closeMenu(tour);
    tour.press("More", "menu-more");
    closeMenu(tour);

    tour.select({1, 2});
    tour.hand.click(tour.pagePoint(5), {}, Qt::RightButton);
    Tour::check(file->selection.value().size() == 2, "a right click selects nothing");
    tour.picture("menu-of-a-page");
    tour.press("Rotate Left");
    waitUntil("The turning of the page of the menu", [&file] { return file->pages.value()[5].turn == 270; });
    Tour::check(file->pages.value()[1].turn == 0, "the menu of page 6 turns page 6 alone");

    const auto chooseAt = [&tour](int row, const QString& entry) {
        tour.hand.click(tour.pagePoint(row), {}, Qt::RightButton);
        tour.press(entry);
    };
    chooseAt(1, "Rotate Right");
    waitUntil("The turning of the selected pages", [&file] { return file->pages.value()[2].turn == 90; });
    chooseAt(3, "Extract…");
    Tour::check(selectedRows(*file) == QList{3}, "extracting selects what it extracts");
    chooseAt(4, "Delete");
    Tour::check(pageOrder(*file) == QList{0, 1, 2, 3, 5, 6, 7, 8, 9, 10, 11},
                "the menu of page 5 deletes it");
}

} // namespace folvane
