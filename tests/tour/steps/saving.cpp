#include "tour/steps.h"

#include <QFile>

namespace folvane {

namespace {

void showOverlay(Tour& tour)
{
    const BusyState job{"Saving…", {}};
    tour.model.busy = job;
    tour.movingPicture("busy");
    tour.hand.click(tour.pagePoint(0));
    Tour::check(currentFile(tour.model)->selection.value().isEmpty(), "the overlay takes all clicks");
    tour.keys({Qt::Key_Return});
    Tour::check(!job.task.stop_requested(), "Return stops nothing");
    tour.keys({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Escape});
    Tour::check(job.task.stop_requested(), "Escape stops the job wherever Tab has led");
    Tour::check(tour.hand.finds("Cancel"), "the overlay stays until the job has ended");
    tour.model.busy = std::nullopt;
    Tour::check(tour.grid().hasFocus(), "the pages have the keyboard again");
}

/// Saves what takes long, and leaves its gaps with the watchdog.
void saveLarge(Tour& tour)
{
    const int many = tour.options.manyPages;
    tour.openSample("Archive.pdf", many);
    tour.picture("before-saving-many-pages");
    tour.press("Rotate Right");
    const QString given_up = tour.save("Given up.pdf", [&tour] {
        tour.press("Save As…");
        Tour::check(tour.model.busy.value().has_value(), "saving many pages takes its time");
        tour.keys({Qt::Key_Escape});
    });
    Tour::check(!QFile::exists(given_up), "a cancelled saving writes no file");

    const QString path = tour.save("Turned archive.pdf", [&tour] { tour.press("Save As…"); });
    const auto unwatched = tour.watchdog.lookAway();
    const QStringList pages = checkedTexts(path);
    Tour::check(pages.size() == many && pages.last().endsWith(QString::number(many)),
                "the saved archive has all pages in their order");
}

} // namespace

void showSaving(Tour& tour)
{
    tour.openSample("Annual report.pdf", 12);
    tour.picture("before-saving");
    showOverlay(tour);

    tour.select({0});
    tour.press("Delete Pages");
    const QString path = tour.save("Shorter report.pdf", [&tour] { tour.press("Save As…"); });
    tour.picture("toast-with-a-button");
    tour.press("Show in Folder");
    Tour::check(tour.workspace.revealed == QList{QUrl::fromLocalFile(path)},
                "the toast shows the saved file");
    const QStringList pages = checkedTexts(path);
    Tour::check(pages.size() == 11 && pages.first() == "Chapter 2",
                "the saved file has the eleven pages that were left");
    tour.letToastGo();
    tour.picture("after-the-toast");

    tour.model.showToast("Copied");
    tour.picture("toast-without-a-button");
    tour.letToastGo();
    saveLarge(tour);
}

} // namespace folvane
