#include "tour/sampleFiles.h"
#include "tour/steps.h"

namespace folvane {

namespace {

const QString longName =
    QStringLiteral("Minutes of the extraordinary meeting of the committee for the copper harbour and "
                   "its lanterns, with all appendices and a letter from the north (final, corrected)");
const QString oneWord = QString(180, QLatin1Char('m'));

void showInTools(Tour& tour)
{
    for (const char* tool : {"Compress", "Password"}) {
        tour.press(QLatin1String(tool));
        tour.picture(QStringLiteral("long-name-%1").arg(QString::fromLatin1(tool).toLower()));
        tour.hand().key(Qt::Key_Escape);
    }
    tour.press(QStringLiteral("Merge PDFs"));
    tour.press(QStringLiteral("Add"));
    tour.picture(QStringLiteral("long-name-menu"));
    tour.hand().key(Qt::Key_Escape);
}

} // namespace

void showLongNames(Tour& tour)
{
    tour.open({tour.sample(oneWord + QStringLiteral(".pdf"), 2)});
    tour.open({tour.sample(longName + QStringLiteral(".pdf"), 12)});
    tour.press(QStringLiteral("Rotate Right"));
    tour.select({0, 1});
    tour.picture(QStringLiteral("long-name"));

    const QString saved = tour.path(longName + QStringLiteral(" - copy.pdf"));
    tour.stage().panels.saveAnswers.enqueue(QUrl::fromLocalFile(saved));
    tour.press(QStringLiteral("Save As…"));
    tour.waitUntilShown(QStringLiteral("The saving"), [&tour] { return !tour.shown()->isEdited; });
    tour.picture(QStringLiteral("long-name-toast"));
    tour.stage().clock.advance(std::chrono::minutes(1));

    tour.press(QStringLiteral("Rotate Right"));
    tour.waitUntilShown(QStringLiteral("The turning"), [&tour] { return tour.shown()->isEdited.value(); });
    tour.model().requestClose(tour.shown());
    tour.picture(QStringLiteral("long-name-closing-question"));
    tour.press(QStringLiteral("Cancel"));

    tour.stage().panels.openAnswers.enqueue({makeLocked(
        tour.path(QStringLiteral("Locked ") + longName + QStringLiteral(".pdf")), QStringLiteral("x"))});
    tour.press(QStringLiteral("Open…"));
    tour.waitUntilShown(QStringLiteral("The question for a password"),
                        [&tour] { return tour.model().passwordRequest.value().has_value(); });
    tour.picture(QStringLiteral("long-name-locked"));
    tour.hand().type(QStringLiteral("x"));
    tour.press(QStringLiteral("Open"));
    tour.waitUntilShown(QStringLiteral("The opening of the locked file"),
                        [&tour] { return tour.shown()->password.has_value(); });
    showInTools(tour);
}

} // namespace folvane
