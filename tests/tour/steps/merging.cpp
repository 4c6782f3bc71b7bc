#include "tools/merge/MergeList.h"
#include "tools/merge/MergeView.h"
#include "tools/merge/mergeRow.h"
#include "tour/sampleFiles.h"
#include "tour/steps.h"

#include <QTest>

namespace folvane {

namespace {

QString order(const AppModel& model)
{
    QStringList names;
    for (const MergeItem& item : model.merge.items.value())
        names.append(item.name);
    return names.join(QStringLiteral(", "));
}

/// Drags it so many rows down. It stays in the window: the mouse alone does it, without the system.
void dragRow(Tour& tour, int row, double rows, const std::function<void()>& over)
{
    MergeList& list = tour.window().mergeView().list();
    const QPoint from = list.visualRect(list.model()->index(row, 0)).center();
    const QPoint way(0, qRound(rows * mergeRowHeight));
    QWidget* viewport = list.viewport();
    const int steps = 12;
    QTest::mousePress(viewport, Qt::LeftButton, {}, from);
    for (int step = 1; step <= steps; ++step)
        QTest::mouseMove(viewport, from + way * step / steps);
    over();
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, from + way);
}

void addMany(Tour& tour)
{
    QList<QUrl> chapters;
    for (int i = 1; i <= 24; ++i)
        chapters.append(tour.sample(QStringLiteral("Chapter %1.pdf").arg(i), i, Paper::Mixed));
    QList<QUrl> files = chapters + chapters + chapters + chapters;
    files.append(
        tour.sample(QStringLiteral("Minutes of the extraordinary meeting of the committee for the copper "
                                   "harbour and its lanterns, with all appendices.pdf"),
                    2));
    tour.stage().panels.openAnswers.enqueue(files);
    tour.press(QStringLiteral("Add"));
    tour.choose(QStringLiteral("Add Files…"));
    tour.waitUntilShown(QStringLiteral("The adding of many files"),
                        [&tour] { return tour.model().merge.items.value().size() == 100; });
}

void showManyFiles(Tour& tour)
{
    addMany(tour);
    tour.picture(QStringLiteral("merge-many-files"));
    tour.window().resize(tour.window().minimumSize());
    dragRow(tour, 98, -2.4, [&tour] { tour.picture(QStringLiteral("merge-many-dragging")); });
}

} // namespace

void showMerging(Tour& tour)
{
    AppModel& model = tour.model();
    tour.press(QStringLiteral("Merge PDFs"));
    tour.picture(QStringLiteral("merge-empty"));
    const QList<QUrl> files{tour.sample(QStringLiteral("Annual report.pdf"), 12, Paper::Mixed),
                            makePicture(tour.path(QStringLiteral("Hills.png")))};
    const QPoint middle = tour.window().mapToGlobal(tour.window().rect().center());
    tour.hand().dragFiles(files, middle, [&tour] { tour.picture(QStringLiteral("merge-files-over")); });
    tour.waitUntilShown(QStringLiteral("The adding of the dropped files"),
                        [&model] { return model.merge.items.value().size() == 2; });
    tour.picture(QStringLiteral("merge-two-files"));
    tour.hand().dragFiles(
        files, middle, [&tour] { tour.picture(QStringLiteral("merge-more-files-over")); }, Hand::End::Cancel);

    tour.open({tour.sample(QStringLiteral("Letter.pdf"), 1)});
    tour.press(QStringLiteral("Rotate Right"));
    tour.waitUntilShown(QStringLiteral("The turning"), [&tour] { return tour.shown()->isEdited.value(); });
    tour.press(QStringLiteral("More"));
    tour.picture(QStringLiteral("menu-more-with-tools"));
    tour.choose(QStringLiteral("Add to Merge"));
    Tour::check(order(model) == QStringLiteral("Annual report, Hills, Letter"),
                QStringLiteral("the turned letter joins the list"));
    tour.press(QStringLiteral("Add"));
    tour.picture(QStringLiteral("merge-menu"));
    tour.hand().key(Qt::Key_Escape);

    dragRow(tour, 2, -2, [&tour] { tour.picture(QStringLiteral("merge-dragging")); });
    Tour::check(order(model) == QStringLiteral("Letter, Annual report, Hills"),
                QStringLiteral("the dragged row comes first"));
    tour.hand().key(Qt::Key_Tab);
    tour.hand().key(Qt::Key_Backtab);
    tour.hand().key(Qt::Key_Down, Qt::AltModifier);
    Tour::check(order(model) == QStringLiteral("Annual report, Letter, Hills"),
                QStringLiteral("the keys move it down"));
    tour.picture(QStringLiteral("merge-moved-by-keys"));

    const QString path = tour.path(QStringLiteral("Merged.pdf"));
    tour.stage().panels.saveAnswers.enqueue(QUrl::fromLocalFile(path));
    tour.press(QStringLiteral("Merge…"));
    tour.waitUntilShown(QStringLiteral("The merging"), [&model] { return model.toast.value().has_value(); });
    Tour::check(checkedTexts(path).size() == 14, QStringLiteral("the merged file has all pages"));
    tour.picture(QStringLiteral("merge-done"));
    showManyFiles(tour);
    tour.press(QStringLiteral("Clear"));
    tour.picture(QStringLiteral("merge-cleared"));
    tour.press(QStringLiteral("Add"));
    tour.choose(QStringLiteral("Letter"));
    tour.picture(QStringLiteral("merge-one-file"));
}

} // namespace folvane
