#include "controls/ChoiceRow.h"
#include "controls/StepSlider.h"
#include "platform/files/writeFile.h"
#include "platform/texts/localeTexts.h"
#include "shell/pageGrid/PageGrid.h"
#include "tools/pdfSamples.h"
#include "tour/TourFailed.h"
#include "tour/sampleFiles.h"
#include "tour/steps.h"

#include <QFileInfo>

namespace folvane {

namespace {

ChoiceRow& row(Tour& tour, const QString& title)
{
    for (ChoiceRow* row : tour.hand().top().findChildren<ChoiceRow*>()) {
        if (row->text().startsWith(title))
            return *row;
    }
    throw TourFailed(QStringLiteral("There is no row “%1”.").arg(title));
}

void choose(Tour& tour, const QString& title)
{
    const ChoiceRow& chosen = row(tour, title);
    tour.hand().click(chosen.mapToGlobal(chosen.rect().center()));
}

/// What the row says behind its title; empty while there is a spinner.
QString value(Tour& tour, const QString& title)
{
    const ChoiceRow& shown = row(tour, title);
    return shown.accessibleName().mid(shown.text().size() + 2);
}

void waitFor(Tour& tour, const QString& title)
{
    tour.waitUntilShown(QStringLiteral("The size of “%1”").arg(title),
                        [&tour, title] { return !value(tour, title).isEmpty(); });
}

void openSheet(Tour& tour, const QUrl& file)
{
    tour.open({file});
    tour.press(QStringLiteral("Compress"));
    tour.waitUntilShown(QStringLiteral("The sheet"),
                        [&tour] { return tour.model().sheet.value().has_value(); });
}

void closeSheet(Tour& tour)
{
    tour.hand().key(Qt::Key_Escape);
    tour.waitUntilShown(QStringLiteral("The end of the sheet"),
                        [&tour] { return !tour.model().sheet.value(); });
}

QUrl photos(Tour& tour, const QString& name, int pages)
{
    const Unwatched unwatched(tour.watchdog());
    return putPhotos(tour.path(name), pages);
}

void fitToLimits(Tour& tour)
{
    choose(tour, QStringLiteral("Up to"));
    tour.movingPicture(QStringLiteral("compress-searching"));
    waitFor(tour, QStringLiteral("Up to"));
    tour.picture(QStringLiteral("compress-up-to"));
    tour.hand().key(Qt::Key_Tab);
    tour.hand().key(Qt::Key_Home);
    waitFor(tour, QStringLiteral("Up to"));
    tour.picture(QStringLiteral("compress-out-of-reach"));
}

void saveSmall(Tour& tour)
{
    choose(tour, QStringLiteral("Small"));
    const QString size = value(tour, QStringLiteral("Small"));
    const QString path = tour.path(QStringLiteral("Smaller.pdf"));
    tour.stage().panels.saveAnswers.enqueue(QUrl::fromLocalFile(path));
    tour.hand().key(Qt::Key_Return);
    tour.waitUntilShown(QStringLiteral("The saving of the small copy"),
                        [&tour] { return tour.model().toast.value().has_value(); });
    const Unwatched unwatched(tour.watchdog());
    Tour::check(byteCount(QFileInfo(path).size()) == size,
                QStringLiteral("the saved copy is as large as the sheet said"));
    Tour::check(checkedTexts(path).size() == 12, QStringLiteral("the small copy has all pages"));
}

} // namespace

void showCompressing(Tour& tour)
{
    openSheet(tour, photos(tour, QStringLiteral("Summer in the mountains.pdf"), 12));
    tour.movingPicture(QStringLiteral("compress-measuring"));
    waitFor(tour, QStringLiteral("Small"));
    tour.picture(QStringLiteral("compress-measured"));
    tour.hand().key(Qt::Key_Down);
    Tour::check(row(tour, QStringLiteral("Small")).isChecked(), QStringLiteral("the arrow keys choose"));
    tour.picture(QStringLiteral("compress-by-keyboard"));
    fitToLimits(tour);
    saveSmall(tour);

    openSheet(tour, tour.sample(QStringLiteral("Annual report.pdf"), 30));
    waitFor(tour, QStringLiteral("Small"));
    tour.picture(QStringLiteral("compress-mostly-text"));
    closeSheet(tour);

    const QUrl gone = tour.sample(QStringLiteral("Old lease.pdf"), 3);
    tour.open({gone});
    tour.waitUntilShown(QStringLiteral("The pages"), [&tour] { return tour.grid().isComplete(); });
    writeFile(gone, "It was cut meanwhile.");
    tour.press(QStringLiteral("Compress"));
    tour.movingPicture(QStringLiteral("compress-error"));
    closeSheet(tour);
}

} // namespace folvane
