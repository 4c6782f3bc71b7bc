#include "tour/steps.h"

#include <QImage>

namespace folvane {

void showExporting(Tour& tour)
{
    tour.openSample("Annual report.pdf", 12);
    tour.press("More");
    tour.choose("Export Pages as Images…", "export");
    tour.press("Screen (100 dpi)");
    tour.press("JPEG", "export-chosen");
    tour.keys({Qt::Key_Tab, Qt::Key_Right}, "export-by-keyboard");
    tour.keys({Qt::Key_Left, Qt::Key_Escape});

    tour.select({1, 4});
    tour.press("More");
    tour.choose("Export Pages as Images…", "export-selection");
    const QString folder = tour.writeInto("pictures", [&tour] { tour.press("Export…"); });
    Tour::check(QImage(folder + "/Annual report page 5.jpg").size() == QSize(826, 1169),
                "the exported page has its size");
    tour.picture("export-done");
}

} // namespace folvane
