#include "tour/steps.h"

namespace folvane {

void showLongNames(Tour& tour)
{
    const QString longName =
        "Minutes of the extraordinary meeting of the committee for the copper harbour and "
        "its lanterns, with all appendices and a letter from the north (final, corrected)";
    tour.openSample(QString(180, u'm') + ".pdf", 2);
    tour.openSample(longName + ".pdf", 12);
    tour.press("Rotate Right");
    tour.select({0, 1});
    tour.picture("long-name");

    tour.save(longName + " - copy.pdf", [&tour] { tour.press("Save As…"); });
    tour.picture("long-name-toast");
    tour.letToastGo();

    tour.turn("Rotate Right");
    tour.model().requestClose(tour.shown());
    tour.picture("long-name-closing-question");
    tour.press("Cancel");

    tour.askForPassword(makeLocked(tour.path("Locked " + longName + ".pdf"), "x"));
    tour.picture("long-name-locked");
    tour.unlock("x");
    for (const char* tool : {"Compress", "Password"}) {
        tour.press(tool, "long-name-" + QString(tool).toLower());
        tour.keys({Qt::Key_Escape});
    }
    tour.press("Merge PDFs");
    tour.press("Add", "long-name-menu");
    tour.keys({Qt::Key_Escape});
}

} // namespace folvane
