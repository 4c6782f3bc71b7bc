#include "tour/steps.h"

namespace folvane {

void showProtecting(Tour& tour)
{
    tour.openSample("Annual report.pdf", 12);
    tour.press("Password", "protect");
    tour.type("pebble");
    tour.keys({Qt::Key_Tab});
    tour.type("pebbel", "protect-mismatch");
    tour.keys({Qt::Key_Backspace, Qt::Key_Backspace});
    tour.type("le", "protect-match");
    const QString copy = tour.save("Protected.pdf", [&tour] { tour.keys({Qt::Key_Return}); });
    tour.picture("protect-done");

    tour.askForPassword(QUrl::fromLocalFile(copy));
    tour.unlock("pebble");
    tour.picture("protected-document");
    tour.press("Password", "protect-again");
    const QString free = tour.save("Free.pdf", [&tour] { tour.press("Save a Copy without Password…"); });
    Tour::check(checkedTexts(free).size() == 12, "the free copy opens without a password");
}

} // namespace folvane
