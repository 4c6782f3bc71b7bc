#include "shell/pageGrid/PageGrid.h"
#include "tour/steps.h"

#include <QScrollBar>

namespace folvane {

namespace {

QList<int> order(const OpenFile& file)
{
    QList<int> pages;
    for (const PageItem& page : file.pages.value())
        pages.append(page.source.index + 1);
    return pages;
}

/// To the end of a document of any length in one go, with the pointer at rest near the edge.
void dragFar(Tour& tour)
{
    const OpenFilePtr file = tour.openSample("Archive.pdf", tour.options().manyPages);
    const QScrollBar& bar = *tour.grid().verticalScrollBar();
    const QWidget& pages = *tour.grid().viewport();
    const QPoint edge = pages.mapToGlobal(pages.rect().bottomRight() - QPoint(80, 3));
    tour.hand().drag(tour.pagePoint(0), edge, [&] {
        tour.wait("The end of the document", [&bar] { return bar.value() == bar.maximum(); });
        tour.picture("dragging-to-the-end");
    });
    Tour::check(order(*file).last() == 1, "the first page has become the last");
}

} // namespace

void showDragging(Tour& tour)
{
    const OpenFilePtr file = tour.openSample("Annual report.pdf", 12, Paper::Mixed);
    Hand& hand = tour.hand();
    tour.picture("before-dragging");
    tour.select({0, 1, 3});
    hand.drag(tour.pagePoint(1), tour.pagePoint(6), [&tour] { tour.picture("dragging-three-pages"); });
    Tour::check(order(*file) == QList{3, 5, 6, 1, 2, 4, 7, 8, 9, 10, 11, 12},
                "the dragged pages stand before page 7");
    tour.picture("after-dragging");

    const std::vector<PageItem> before = file->pages.value();
    hand.drag(tour.pagePoint(0), tour.pagePoint(5), [] {}, Hand::End::Cancel);
    Tour::check(file->pages.value() == before, "a drag that is given up moves nothing");

    hand.key(Qt::Key_Home, Qt::AltModifier);
    Tour::check(order(*file).first(3) == QList{1, 2, 4}, "the keys carry the selected pages to the start");
    hand.key(Qt::Key_End, Qt::AltModifier);
    Tour::check(order(*file).last(3) == QList{1, 2, 4}, "and to the end");
    hand.key(Qt::Key_Home, Qt::AltModifier);

    const QList<QUrl> files{makePicture(tour.path("Hills.png")),
                            tour.sample("Letter.pdf", 1, Paper::Upright, "Letter")};
    hand.dragFiles(files, tour.pagePoint(2), [&tour] { tour.picture("files-over-pages"); });
    tour.wait("The coming of the dropped pages", [&file] { return file->pages.value().size() == 14; });
    tour.picture("files-dropped-on-pages");
    Tour::check(tour.model().files.value().size() == 1, "files dropped on pages open no document");
    hand.key(Qt::Key_Escape);
    hand.dragFiles(
        files, tour.pagePoint(2), [&tour] { tour.picture("files-over-pages-without-selection"); },
        Hand::End::Cancel);
    dragFar(tour);
}

} // namespace folvane
