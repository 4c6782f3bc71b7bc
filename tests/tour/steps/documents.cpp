#include "shell/pageGrid/PageGrid.h"
#include "tour/sampleFiles.h"
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
    const OpenFilePtr one = tour.open({tour.sample(QStringLiteral("Letter.pdf"), 1)});
    tour.picture(QStringLiteral("document-of-1-page"));
    Tour::check(one->pages.value().size() == 1, QStringLiteral("the letter has one page"));

    tour.open({tour.sample(QStringLiteral("Annual report.pdf"), 12, Paper::Mixed)});
    tour.picture(QStringLiteral("document-of-12-pages"));

    const int many = tour.options().manyPages;
    const OpenFilePtr large = tour.open({tour.sample(QStringLiteral("Archive.pdf"), many)});
    Tour::check(int(large->pages.value().size()) == many, QStringLiteral("the archive has all its pages"));
    tour.picture(QStringLiteral("document-of-many-pages"));
    scrollThrough(tour);
    tour.movingPicture(QStringLiteral("document-of-many-pages-arriving-at-its-end"));
    tour.picture(QStringLiteral("document-of-many-pages-at-its-end"));

    tour.open({makePicture(tour.path(QStringLiteral("Hills.png")))});
    tour.picture(QStringLiteral("document-of-a-picture"));
}

} // namespace folvane
