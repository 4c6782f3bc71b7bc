#include "tour/sampleFiles.h"
#include "tour/steps.h"

namespace folvane {

void showPasswords(Tour& tour)
{
    const QUrl locked =
        makeLocked(tour.path(QStringLiteral("Salary statement.pdf")), QStringLiteral("pebble"));
    AppModel& model = tour.model();
    const auto ask = [&tour, &model, &locked] {
        tour.stage().panels.openAnswers.enqueue({locked});
        tour.press(QStringLiteral("Open…"));
        tour.waitUntilShown(QStringLiteral("The question for a password"),
                            [&model] { return model.passwordRequest.value().has_value(); });
    };
    ask();
    tour.picture(QStringLiteral("password"));
    tour.hand().type(QStringLiteral("stone"));
    tour.picture(QStringLiteral("password-typed"));
    tour.hand().key(Qt::Key_Return);
    tour.waitUntilShown(QStringLiteral("The second question for a password"), [&model] {
        return model.passwordRequest.value() && model.passwordRequest.value()->wasWrong;
    });
    tour.picture(QStringLiteral("password-again"));
    tour.hand().key(Qt::Key_Escape);
    tour.waitUntilShown(QStringLiteral("The end of the question"),
                        [&model] { return !model.passwordRequest.value(); });
    Tour::check(model.files.value().isEmpty(), QStringLiteral("without its password the file is not opened"));

    ask();
    tour.hand().type(QStringLiteral("pebble"));
    tour.press(QStringLiteral("Open"));
    tour.waitUntilShown(QStringLiteral("The opening of the locked file"),
                        [&tour] { return bool(tour.shown()); });
    tour.picture(QStringLiteral("document-that-was-locked"));
}

} // namespace folvane
