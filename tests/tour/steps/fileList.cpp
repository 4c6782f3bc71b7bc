#include "tour/steps.h"

#include <QApplication>

namespace folvane {

void showFileList(Tour& tour)
{
    QList<QUrl> files;
    for (int number = 1; number <= 24; ++number)
        files.append(tour.sample(QStringLiteral("Report %1.pdf").arg(number), number));
    tour.open(files);
    tour.picture("many-files");

    tour.hand().key(Qt::Key_PageDown, Qt::ControlModifier);
    tour.turn("Rotate Right");
    while (QApplication::focusWidget()->accessibleName() != "Report 1, 1 pages, Not saved")
        tour.keys({Qt::Key_Tab});
    tour.keys({Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Down}, "many-files-by-keyboard");
    tour.keys({Qt::Key_Return});
    Tour::check(tour.shown()->name == "Report 5", "Return shows the document that the arrows led to");
}

} // namespace folvane
