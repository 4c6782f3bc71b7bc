#include "tour/sampleFiles.h"
#include "tour/steps.h"

#include <QDir>
#include <QFile>

namespace folvane {

void showSplitting(Tour& tour)
{
    const OpenFilePtr file = tour.open({tour.sample(QStringLiteral("Annual report.pdf"), 12)});
    tour.press(QStringLiteral("Split"));
    tour.picture(QStringLiteral("split"));
    tour.hand().type(QStringLiteral("1-3, 13"));
    tour.picture(QStringLiteral("split-ranges-invalid"));
    for (int i = 0; i < 2; ++i)
        tour.hand().key(Qt::Key_Backspace);
    tour.hand().type(QStringLiteral("5, 6, 7, 8, 9, 10-12"));
    tour.picture(QStringLiteral("split-ranges"));
    tour.press(QStringLiteral("Every few pages"));
    tour.picture(QStringLiteral("split-every"));
    tour.press(QStringLiteral("Page by page"));
    tour.picture(QStringLiteral("split-each"));
    tour.hand().key(Qt::Key_Escape);
    Tour::check(!tour.model().sheet.value(), QStringLiteral("Escape takes the sheet away"));

    tour.select({1, 2, 4});
    tour.press(QStringLiteral("Split"));
    tour.picture(QStringLiteral("split-selection"));
    const QString folder = tour.path(QStringLiteral("pieces"));
    Tour::check(QDir().mkpath(folder), QStringLiteral("there is a folder for the pieces"));
    tour.stage().panels.folderAnswers.enqueue(QUrl::fromLocalFile(folder));
    tour.press(QStringLiteral("Split…"));
    tour.waitUntilShown(QStringLiteral("The splitting"),
                        [&tour] { return tour.model().toast.value().has_value(); });
    Tour::check(checkedTexts(folder + QStringLiteral("/Annual report 2-3.pdf"))
                    == QStringList{QStringLiteral("Chapter 2"), QStringLiteral("Chapter 3")},
                QStringLiteral("a piece has its pages"));
    tour.picture(QStringLiteral("split-done"));

    const QString longName = QString(180, QLatin1Char('m')) + QStringLiteral(".pdf");
    tour.open({tour.sample(longName, 2)});
    tour.press(QStringLiteral("Split"));
    tour.picture(QStringLiteral("split-long-name"));
}

} // namespace folvane
