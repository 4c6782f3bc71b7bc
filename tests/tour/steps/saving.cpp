#include "tour/steps.h"

#include <QCoro/QCoroFuture>
#include <QFile>
#include <QPromise>

namespace folvane {

namespace {

/// Runs until it is asked to stop.
QCoro::Task<> endless(std::stop_token stop)
{
    QPromise<void> stopped;
    stopped.start();
    const std::stop_callback onStop(stop, [&stopped] { stopped.finish(); });
    const QFuture<void> end = stopped.future();
    co_await end;
}

void showOverlay(Tour& tour)
{
    tour.model().run("Saving…", endless);
    tour.movingPicture("busy");
    tour.hand().click(tour.pagePoint(0));
    Tour::check(tour.shown()->selection.value().isEmpty(), "the overlay takes all clicks");
    tour.keys({Qt::Key_Escape});
    tour.waitUntilIdle();
}

/// Saves what takes long, and leaves its gaps with the watchdog.
void saveLarge(Tour& tour)
{
    const int many = tour.options().manyPages;
    tour.openSample("Archive.pdf", many);
    tour.picture("before-saving-many-pages");
    tour.press("Rotate Right");
    const QString given_up = tour.save("Given up.pdf", [&tour] {
        tour.press("Save As…");
        Tour::check(tour.model().busy.value().has_value(), "saving many pages takes its time");
        tour.keys({Qt::Key_Escape});
    });
    Tour::check(!QFile::exists(given_up), "a cancelled saving writes no file");
    Tour::check(tour.shown()->isEdited, "a cancelled saving leaves the document edited");

    const QString path = tour.save("Turned archive.pdf", [&tour] { tour.press("Save As…"); });
    const Unwatched unwatched(tour.watchdog());
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
    tour.press("Show in Finder");
    Tour::check(tour.stage().workspace.revealed == QList{QUrl::fromLocalFile(path)},
                "the toast shows the saved file");
    const QStringList pages = checkedTexts(path);
    Tour::check(pages.size() == 11 && pages.first() == "Chapter 2",
                "the saved file has the eleven pages that were left");
    tour.letToastGo();
    tour.picture("after-the-toast");

    tour.model().showToast("Copied");
    tour.picture("toast-without-a-button");
    tour.letToastGo();
    saveLarge(tour);
}

} // namespace folvane
