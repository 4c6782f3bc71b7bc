#include "tour/sampleFiles.h"
#include "tour/steps.h"

#include <QDir>
#include <QImage>

namespace folvane {

void showExporting(Tour& tour)
{
    tour.open({tour.sample(QStringLiteral("Annual report.pdf"), 12)});
    tour.press(QStringLiteral("More"));
    tour.choose(QStringLiteral("Export Pages as Images…"));
    tour.picture(QStringLiteral("export"));
    tour.press(QStringLiteral("Screen (100 dpi)"));
    tour.press(QStringLiteral("JPEG"));
    tour.picture(QStringLiteral("export-chosen"));
    tour.hand().key(Qt::Key_Tab);
    tour.hand().key(Qt::Key_Right);
    tour.picture(QStringLiteral("export-by-keyboard"));
    tour.hand().key(Qt::Key_Left);
    tour.hand().key(Qt::Key_Escape);

    tour.select({1, 4});
    tour.press(QStringLiteral("More"));
    tour.choose(QStringLiteral("Export Pages as Images…"));
    tour.picture(QStringLiteral("export-selection"));
    const QString folder = tour.path(QStringLiteral("pictures"));
    Tour::check(QDir().mkpath(folder), QStringLiteral("there is a folder for the pictures"));
    tour.stage().panels.folderAnswers.enqueue(QUrl::fromLocalFile(folder));
    tour.press(QStringLiteral("Export…"));
    tour.waitUntilShown(QStringLiteral("The exporting"),
                        [&tour] { return tour.model().toast.value().has_value(); });
    Tour::check(QImage(folder + QStringLiteral("/Annual report page 5.jpg")).size() == QSize(826, 1169),
                QStringLiteral("the exported page has its size"));
    tour.picture(QStringLiteral("export-done"));
}

} // namespace folvane
