#include "tour/sampleFiles.h"
#include "tour/steps.h"
#include "tour/waiting.h"

#include <QCoro/QCoroFuture>
#include <QFile>
#include <QPromise>

namespace folvane {

namespace {

void saveAs(Tour& tour, const QString& path)
{
    tour.stage().panels.saveAnswers.enqueue(QUrl::fromLocalFile(path));
    tour.press(QStringLiteral("Save As…"));
}

bool isIdle(const AppModel& model)
{
    return !model.busy.value();
}

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
    tour.model().run(QStringLiteral("Saving…"), endless);
    tour.movingPicture(QStringLiteral("busy"));
    tour.hand().click(tour.pagePoint(0));
    Tour::check(tour.shown()->selection.value().isEmpty(), QStringLiteral("the overlay takes all clicks"));
    tour.hand().key(Qt::Key_Escape);
    tour.waitUntilShown(QStringLiteral("The end of the cancelled job"),
                        [&tour] { return isIdle(tour.model()); });
}

/// Saves what takes long, and leaves its gaps with the watchdog.
void saveLarge(Tour& tour)
{
    const int many = tour.options().manyPages;
    tour.open({tour.sample(QStringLiteral("Archive.pdf"), many)});
    tour.picture(QStringLiteral("before-saving-many-pages"));
    tour.press(QStringLiteral("Rotate Right"));
    const QString given_up = tour.path(QStringLiteral("Given up.pdf"));
    saveAs(tour, given_up);
    Tour::check(!isIdle(tour.model()), QStringLiteral("saving many pages takes its time"));
    tour.hand().key(Qt::Key_Escape);
    tour.waitUntilShown(QStringLiteral("The end of a cancelled saving"),
                        [&tour] { return isIdle(tour.model()); });
    Tour::check(!QFile::exists(given_up), QStringLiteral("a cancelled saving writes no file"));
    Tour::check(tour.shown()->isEdited, QStringLiteral("a cancelled saving leaves the document edited"));

    const QString path = tour.path(QStringLiteral("Turned archive.pdf"));
    saveAs(tour, path);
    tour.waitUntilShown(QStringLiteral("The saving of many pages"), [&tour] { return isIdle(tour.model()); });
    const Unwatched unwatched(tour.watchdog());
    const QStringList pages = checkedTexts(path);
    Tour::check(pages.size() == many && pages.last().endsWith(QString::number(many)),
                QStringLiteral("the saved archive has all pages in their order"));
}

} // namespace

void showSaving(Tour& tour)
{
    const OpenFilePtr file = tour.open({tour.sample(QStringLiteral("Annual report.pdf"), 12)});
    tour.picture(QStringLiteral("before-saving"));
    showOverlay(tour);

    tour.select({0});
    tour.press(QStringLiteral("Delete Pages"));
    const QString path = tour.path(QStringLiteral("Shorter report.pdf"));
    saveAs(tour, path);
    tour.waitUntilShown(QStringLiteral("The saving"), [&file] { return !file->isEdited; });
    tour.picture(QStringLiteral("toast-with-a-button"));
    tour.press(QStringLiteral("Show in Finder"));
    Tour::check(tour.stage().workspace.revealed == QList{QUrl::fromLocalFile(path)},
                QStringLiteral("the toast shows the saved file"));
    const QStringList pages = checkedTexts(path);
    Tour::check(pages.size() == 11 && pages.first().startsWith(QStringLiteral("Chapter 2")),
                QStringLiteral("the saved file has the eleven pages that were left"));
    tour.stage().clock.advance(std::chrono::minutes(1));
    tour.picture(QStringLiteral("after-the-toast"));

    tour.model().showToast(QStringLiteral("Copied"));
    tour.picture(QStringLiteral("toast-without-a-button"));
    tour.stage().clock.advance(std::chrono::minutes(1));
    saveLarge(tour);
}

} // namespace folvane
