#include "tour/sampleFiles.h"
#include "tour/steps.h"

namespace folvane {

void showAlerts(Tour& tour)
{
    AppModel& model = tour.model();
    tour.stage().panels.openAnswers.enqueue({makeDamaged(tour.path(QStringLiteral("Broken.pdf")))});
    tour.press(QStringLiteral("Open…"));
    tour.waitUntilShown(QStringLiteral("The message about a damaged file"),
                        [&model] { return model.errorMessage.value().has_value(); });
    tour.picture(QStringLiteral("error"));
    tour.press(QStringLiteral("OK"));
    Tour::check(!model.errorMessage.value(), QStringLiteral("OK takes the message away"));

    const OpenFilePtr report = tour.open({tour.sample(QStringLiteral("Annual report.pdf"), 12)});
    tour.hand().key(Qt::Key_Delete);
    tour.picture(QStringLiteral("error-of-deleting-nothing"));
    tour.press(QStringLiteral("OK"));

    tour.press(QStringLiteral("Rotate Right"));
    const OpenFilePtr letter = tour.open({tour.sample(QStringLiteral("Letter.pdf"), 1)});
    tour.press(QStringLiteral("Rotate Left"));
    tour.waitUntilShown(QStringLiteral("The turning"), [&] { return report->isEdited && letter->isEdited; });
    tour.openMenu(QStringLiteral("File"));
    tour.choose(QStringLiteral("Close File"));
    tour.picture(QStringLiteral("closing-question"));
    tour.press(QStringLiteral("Cancel"));
    Tour::check(model.files.value().size() == 2, QStringLiteral("Cancel keeps the document"));

    tour.hand().key(Qt::Key_Q, Qt::ControlModifier);
    tour.picture(QStringLiteral("quit-question"));
    tour.press(QStringLiteral("Cancel"));

    tour.openMenu(QStringLiteral("File"));
    tour.choose(QStringLiteral("Close File"));
    tour.press(QStringLiteral("Don't Save"));
    Tour::check(model.files.value() == QList{report} && tour.shown() == report,
                QStringLiteral("Don't Save closes the document, and the other is shown"));
    tour.picture(QStringLiteral("after-closing"));
}

} // namespace folvane
