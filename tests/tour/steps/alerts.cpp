#include "platform/files/writeFile.h"
#include "tour/steps.h"

namespace folvane {

void showAlerts(Tour& tour)
{
    AppModel& model = tour.model;
    const QUrl broken = QUrl::fromLocalFile(tour.path("Broken.pdf"));
    writeFile(broken, "This was never a PDF.");
    tour.openBy("Open…", {broken});
    waitUntil("The message about a damaged file",
              [&model] { return model.errorMessage.value().has_value(); });
    tour.picture("error");
    tour.press("OK");
    Tour::check(!model.errorMessage.value(), "OK takes the message away");

    const OpenFilePtr report = tour.openSample("Annual report.pdf", 12);
    tour.keys({Qt::Key_Delete}, "error-of-deleting-nothing");
    tour.press("OK");

    tour.turn("Rotate Right");
    tour.openSample("Letter.pdf", 1);
    tour.turn("Rotate Left");
    tour.press("File");
    tour.press("Close File", "closing-question");
    tour.press("Cancel");
    Tour::check(model.files.value().size() == 2, "Cancel keeps the document");

    tour.hand.key(Qt::Key_Q, Qt::ControlModifier);
    tour.picture("quit-question");
    tour.press("Cancel");

    tour.press("File");
    tour.press("Close File");
    tour.press("Don't Save");
    Tour::check(model.files.value() == QList{report} && currentFile(tour.model) == report,
                "Don't Save closes the document, and the other is shown");
    tour.picture("after-closing");
}

} // namespace folvane
