#include "tour/steps.h"

namespace folvane {

void showHome(Tour& tour)
{
    tour.picture("home");
    const QList<QUrl> files{tour.sample("Annual report.pdf", 12)};
    const QPoint middle = tour.placeOf("Drop PDFs or images here").center();

    tour.hand().dragFiles(files, middle, [&tour] { tour.picture("home-files-over"); }, Hand::End::Cancel);
    tour.picture("home-files-left");
    Tour::check(tour.model().files.value().isEmpty(), "a drag that is given up opens nothing");

    tour.hand().dragFiles(files, middle, [] {});
    tour.wait("The opening of a dropped file", [&tour] { return bool(tour.shown()); });
    tour.press("Home", "home-with-a-document");
    tour.hand().hover(tour.placeOf("Close “Annual report”").center());
    tour.picture("home-close-under-pointer");
}

} // namespace folvane
