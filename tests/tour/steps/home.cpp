#include "tour/sampleFiles.h"
#include "tour/steps.h"

namespace folvane {

void showHome(Tour& tour)
{
    tour.picture(QStringLiteral("home"));
    const QList<QUrl> files{tour.sample(QStringLiteral("Annual report.pdf"), 12)};
    const QPoint middle = tour.placeOf(QStringLiteral("Drop PDFs or images here")).center();

    tour.hand().dragFiles(
        files, middle, [&tour] { tour.picture(QStringLiteral("home-files-over")); }, Hand::End::Cancel);
    tour.picture(QStringLiteral("home-files-left"));
    Tour::check(tour.model().files.value().isEmpty(),
                QStringLiteral("a drag that is given up opens nothing"));

    tour.hand().dragFiles(files, middle, [] {});
    tour.waitUntilShown(QStringLiteral("The opening of a dropped file"),
                        [&tour] { return bool(tour.shown()); });
    tour.press(QStringLiteral("Home"));
    tour.picture(QStringLiteral("home-with-a-document"));
    tour.hand().hover(tour.placeOf(QStringLiteral("Close “Annual report”")).center());
    tour.picture(QStringLiteral("home-close-under-pointer"));
}

} // namespace folvane
