#include "tour/steps.h"

namespace folvane {

void showPasswords(Tour& tour)
{
    const QUrl locked = makeLocked(tour.path("Salary statement.pdf"), "pebble");
    const auto& question = tour.model().passwordRequest;
    tour.askForPassword(locked);
    tour.picture("password");
    tour.type("stone", "password-typed");
    tour.keys({Qt::Key_Return});
    tour.wait("The second question", [&] { return question.value() && question.value()->wasWrong; });
    tour.picture("password-again");
    tour.keys({Qt::Key_Escape});
    tour.wait("The end of the question", [&] { return !question.value(); });
    Tour::check(tour.model().files.value().isEmpty(), "without its password the file is not opened");

    tour.askForPassword(locked);
    tour.unlock("pebble");
    tour.picture("document-that-was-locked");
}

} // namespace folvane
