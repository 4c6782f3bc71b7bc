#include "shell/pageGrid/PageGrid.h"
#include "tour/steps.h"

#include <QCoreApplication>
#include <QScrollBar>

namespace folvane {

namespace {

/// From the first page to the last, as fast as a hand pulls the scroll bar.
void scrollThrough(Tour& tour)
{
    QScrollBar& bar = *tour.grid().verticalScrollBar();
    const int steps = 200;
    for (int step = 1; step <= steps; ++step) {
        bar.setValue(bar.maximum() * step / steps);
        QCoreApplication::processEvents();
    }
}

} // namespace

void showHome(Tour& tour)
{
    tour.picture("home");
    const QList<QUrl> files{tour.sample("Annual report.pdf", 12)};
    const QPoint middle = tour.hand.placeOf("Drop PDFs or images here").center();

    tour.hand.dragFiles(files, middle, [&tour] { tour.picture("home-files-over"); }, Hand::End::Cancel);
    tour.picture("home-files-left");
    Tour::check(tour.model.files.value().isEmpty(), "a drag that is given up opens nothing");

    tour.hand.dragFiles(files, middle, [] {});
    waitUntil("The opening of a dropped file", [&tour] { return bool(currentFile(tour.model)); });
    tour.press("Home", "home-with-a-document");
    tour.hand.hover(tour.hand.placeOf("Close “Annual report”").center());
    tour.picture("home-close-under-pointer");
}

void showDocuments(Tour& tour)
{
    tour.openSample("Letter.pdf", 1);
    tour.picture("document-of-1-page");

    tour.openSample("Annual report.pdf", 12, Paper::Mixed);
    tour.picture("document-of-12-pages");

    tour.openSample("Archive.pdf", tour.options.manyPages);
    tour.picture("document-of-many-pages");
    scrollThrough(tour);
    tour.movingPicture("document-of-many-pages-arriving-at-its-end");
    tour.picture("document-of-many-pages-at-its-end");

    tour.open({makePicture(tour.path("Hills.png"))});
    tour.picture("document-of-a-picture");
}

} // namespace folvane
