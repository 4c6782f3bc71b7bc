#include "tour/sampleFiles.h"
#include "tour/steps.h"

#include <QApplication>

namespace folvane {

void showFileList(Tour& tour)
{
    QList<QUrl> files;
    for (int number = 1; number <= 24; ++number)
        files.append(tour.sample(QStringLiteral("Report %1.pdf").arg(number), number));
    tour.open(files);
    tour.picture(QStringLiteral("many-files"));

    tour.hand().key(Qt::Key_PageDown, Qt::ControlModifier);
    tour.press(QStringLiteral("Rotate Right"));
    tour.waitUntilShown(QStringLiteral("The turning"), [&tour] { return tour.shown()->isEdited.value(); });
    while (QApplication::focusWidget()->accessibleName() != QStringLiteral("Report 1, 1 pages, Not saved"))
        tour.hand().key(Qt::Key_Tab);
    for (int step = 0; step < 4; ++step)
        tour.hand().key(Qt::Key_Down);
    tour.picture(QStringLiteral("many-files-by-keyboard"));
    tour.hand().key(Qt::Key_Return);
    Tour::check(tour.shown()->name == QStringLiteral("Report 5"),
                QStringLiteral("Return shows the document that the arrows led to"));
}

} // namespace folvane
