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

void showDocuments(Tour& tour)
{
    const OpenFilePtr one = tour.openSample("Letter.pdf", 1);
    tour.picture("document-of-1-page");
    Tour::check(one->pages.value().size() == 1, "the letter has one page");

    tour.openSample("Annual report.pdf", 12, Paper::Mixed);
    tour.picture("document-of-12-pages");

    const int many = tour.options().manyPages;
    const OpenFilePtr large = tour.openSample("Archive.pdf", many);
    Tour::check(int(large->pages.value().size()) == many, "the archive has all its pages");
    tour.picture("document-of-many-pages");
    scrollThrough(tour);
    tour.movingPicture("document-of-many-pages-arriving-at-its-end");
    tour.picture("document-of-many-pages-at-its-end");

    tour.open({makePicture(tour.path("Hills.png"))});
    tour.picture("document-of-a-picture");
}

} // namespace folvane
