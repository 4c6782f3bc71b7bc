#include "shell/pageGrid/PageGrid.h"
#include "tour/sampleFiles.h"
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
    const int many = tour.options().manyPages;
    const OpenFilePtr file = tour.open({tour.sample(QStringLiteral("Archive.pdf"), many)});
    const QScrollBar& bar = *tour.grid().verticalScrollBar();
    const QPoint edge =
        tour.grid().viewport()->mapToGlobal(tour.grid().viewport()->rect().bottomRight() - QPoint(80, 3));
    tour.hand().drag(tour.pagePoint(0), edge, [&] {
        tour.waitUntilShown(QStringLiteral("The end of the document"),
                            [&bar] { return bar.value() == bar.maximum(); });
        tour.picture(QStringLiteral("dragging-to-the-end"));
    });
    Tour::check(order(*file).last() == 1, QStringLiteral("the first page has become the last"));
}

} // namespace

void showDragging(Tour& tour)
{
    const OpenFilePtr file = tour.open({tour.sample(QStringLiteral("Annual report.pdf"), 12, Paper::Mixed)});
    tour.picture(QStringLiteral("before-dragging"));
    tour.select({0, 1, 3});
    tour.hand().drag(tour.pagePoint(1), tour.pagePoint(6),
                     [&tour] { tour.picture(QStringLiteral("dragging-three-pages")); });
    Tour::check(order(*file) == QList{3, 5, 6, 1, 2, 4, 7, 8, 9, 10, 11, 12},
                QStringLiteral("the dragged pages stand before page 7"));
    tour.picture(QStringLiteral("after-dragging"));

    const std::vector<PageItem> before = file->pages.value();
    tour.hand().drag(tour.pagePoint(0), tour.pagePoint(5), [] {}, Hand::End::Cancel);
    Tour::check(file->pages.value() == before, QStringLiteral("a drag that is given up moves nothing"));

    tour.hand().key(Qt::Key_Home, Qt::AltModifier);
    Tour::check(order(*file).first(3) == QList{1, 2, 4},
                QStringLiteral("the keys carry the selected pages to the start"));
    tour.hand().key(Qt::Key_End, Qt::AltModifier);
    Tour::check(order(*file).last(3) == QList{1, 2, 4}, QStringLiteral("and to the end"));
    tour.hand().key(Qt::Key_Home, Qt::AltModifier);

    const QList<QUrl> files{
        makePicture(tour.path(QStringLiteral("Hills.png"))),
        tour.sample(QStringLiteral("Letter.pdf"), 1, Paper::Upright, QStringLiteral("Letter"))};
    tour.hand().dragFiles(files, tour.pagePoint(2),
                          [&tour] { tour.picture(QStringLiteral("files-over-pages")); });
    tour.waitUntilShown(QStringLiteral("The coming of the dropped pages"),
                        [&file] { return file->pages.value().size() == 14; });
    tour.picture(QStringLiteral("files-dropped-on-pages"));
    Tour::check(tour.model().files.value().size() == 1,
                QStringLiteral("files dropped on pages open no document"));
    tour.hand().key(Qt::Key_Escape);
    tour.hand().dragFiles(
        files, tour.pagePoint(2),
        [&tour] { tour.picture(QStringLiteral("files-over-pages-without-selection")); }, Hand::End::Cancel);
    dragFar(tour);
}

} // namespace folvane
