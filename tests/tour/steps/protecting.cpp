#include "tour/sampleFiles.h"
#include "tour/steps.h"

namespace folvane {

void showProtecting(Tour& tour)
{
    AppModel& model = tour.model();
    tour.open({tour.sample(QStringLiteral("Annual report.pdf"), 12)});
    tour.press(QStringLiteral("Password"));
    tour.picture(QStringLiteral("protect"));
    tour.hand().type(QStringLiteral("pebble"));
    tour.hand().key(Qt::Key_Tab);
    tour.hand().type(QStringLiteral("pebbel"));
    tour.picture(QStringLiteral("protect-mismatch"));
    for (int i = 0; i < 2; ++i)
        tour.hand().key(Qt::Key_Backspace);
    tour.hand().type(QStringLiteral("le"));
    tour.picture(QStringLiteral("protect-match"));
    const QUrl copy = QUrl::fromLocalFile(tour.path(QStringLiteral("Protected.pdf")));
    tour.stage().panels.saveAnswers.enqueue(copy);
    tour.hand().key(Qt::Key_Return);
    tour.waitUntilShown(QStringLiteral("The saving"), [&model] { return model.toast.value().has_value(); });
    tour.picture(QStringLiteral("protect-done"));

    tour.stage().panels.openAnswers.enqueue({copy});
    tour.press(QStringLiteral("Open…"));
    tour.waitUntilShown(QStringLiteral("The question for the password"),
                        [&model] { return model.passwordRequest.value().has_value(); });
    tour.hand().type(QStringLiteral("pebble"));
    tour.press(QStringLiteral("Open"));
    tour.waitUntilShown(QStringLiteral("The opening of the protected copy"),
                        [&tour] { return tour.shown() && tour.shown()->password; });
    tour.picture(QStringLiteral("protected-document"));
    tour.press(QStringLiteral("Password"));
    tour.picture(QStringLiteral("protect-again"));
    const QString free = tour.path(QStringLiteral("Free.pdf"));
    tour.stage().panels.saveAnswers.enqueue(QUrl::fromLocalFile(free));
    tour.press(QStringLiteral("Save a Copy without Password…"));
    tour.waitUntilShown(QStringLiteral("The saving of the free copy"), [&model] {
        return model.toast.value() && model.toast.value()->text.contains(QStringLiteral("Free"));
    });
    Tour::check(checkedTexts(free).size() == 12, QStringLiteral("the free copy opens without a password"));
}

} // namespace folvane
