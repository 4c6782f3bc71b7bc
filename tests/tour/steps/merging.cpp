#include "tour/steps.h"

namespace folvane {

namespace {

void waitForRows(Tour& tour, size_t count)
{
    waitUntil("The adding of files", [&] { return tour.model.merge.items.value().size() == count; });
}

/// Drags it so many rows down.
void dragRow(Tour& tour, int row, double rows, const QString& picture)
{
    tour.hand.pull(tour.mergePoint(row + 0.5), tour.mergePoint(row + 0.5 + rows),
                   [&] { tour.picture(picture); });
}

void showManyFiles(Tour& tour)
{
    QList<QUrl> chapters;
    for (int i = 1; i <= 24; ++i)
        chapters.append(tour.sample(QStringLiteral("Chapter %1.pdf").arg(i), i, Paper::Mixed));
    const QUrl longName = tour.sample("Minutes of the extraordinary meeting of the committee for the copper "
                                      "harbour and its lanterns, with all appendices.pdf",
                                      2);
    tour.panels.openAnswers.enqueue(chapters + chapters + chapters + chapters + QList{longName});
    tour.press("Add");
    tour.press("Add Files…");
    waitForRows(tour, 100);
    tour.picture("merge-many-files");
    tour.window.resize(tour.window.minimumSize());
    dragRow(tour, 98, -2.4, "merge-many-dragging");
}

} // namespace

void showMerging(Tour& tour)
{
    tour.press("Merge PDFs", "merge-empty");
    const QList<QUrl> files{tour.sample("Annual report.pdf", 12, Paper::Mixed),
                            makePicture(tour.path("Hills.png"))};
    const QPoint middle = tour.window.mapToGlobal(tour.window.rect().center());
    tour.hand.dragFiles(files, middle, [&tour] { tour.picture("merge-files-over"); });
    waitForRows(tour, 2);
    tour.picture("merge-two-files");
    tour.hand.dragFiles(files, middle, [&tour] { tour.picture("merge-more-files-over"); }, Hand::End::Cancel);

    tour.openSample("Letter.pdf", 1);
    tour.turn("Rotate Right");
    tour.press("More", "menu-more-with-tools");
    tour.press("Add to Merge");
    tour.press("Add", "merge-menu");
    tour.keys({Qt::Key_Escape});

    dragRow(tour, 2, -2, "merge-dragging");
    tour.keys({Qt::Key_Tab, Qt::Key_Backtab});
    tour.hand.key(Qt::Key_Down, Qt::AltModifier);
    tour.picture("merge-moved-by-keys");

    const QString path = tour.save("Merged.pdf", [&tour] { tour.press("Merge…"); });
    const QStringList pages = checkedTexts(path);
    Tour::check(
        pages.size() == 14 && pages.sliced(11) == QStringList{"Chapter 12", "Chapter 1", ""},
        "the merged file has the letter, dragged to the front and moved down by keys, before the picture");
    tour.picture("merge-done");
    showManyFiles(tour);
    tour.press("Clear", "merge-cleared");
    tour.press("Add");
    tour.press("Letter", "merge-one-file");
    Tour::check(!tour.hand.finds("Merge…"), "there is nothing to merge with one file");
}

} // namespace folvane
