#include "tour/steps.h"

namespace folvane {

void showPasswords(Tour& tour)
{
    const QUrl locked = makeLocked(tour.path("Salary statement.pdf"), "pebble");
    const auto& question = tour.model.passwordRequest;
    tour.askForPassword(locked);
    tour.picture("password");
    tour.keys({Qt::Key_Return});
    Tour::check(!tour.hand.finds("Open") && tour.hand.finds("Cancel"), "an empty password opens nothing");
    tour.type("stone", "password-typed");
    tour.keys({Qt::Key_Return});
    waitUntil("The second question", [&] { return question.value() && question.value()->wasWrong; });
    tour.picture("password-again");
    tour.keys({Qt::Key_Escape});
    waitUntil("The end of the question", [&] { return !question.value(); });
    Tour::check(tour.model.files.value().isEmpty(), "without its password the file is not opened");

    tour.askForPassword(locked);
    tour.unlock("pebble");
    tour.picture("document-that-was-locked");
}

void showProtecting(Tour& tour)
{
    tour.openSample("Annual report.pdf", 12);
    const auto saves = [&tour] { return tour.hand.finds("Save Protected Copy…"); };
    tour.press("Password", "protect");
    Tour::check(!saves(), "an empty password protects nothing");
    tour.type("pebble");
    tour.keys({Qt::Key_Tab});
    tour.type("pebbel", "protect-mismatch");
    Tour::check(!saves(), "the passwords must be the same");
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
