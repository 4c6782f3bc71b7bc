#include "controls/choices/ChoiceRow.h"
#include "platform/files/writeFile.h"
#include "platform/texts/localeTexts.h"
#include "tools/pdfSamples.h"
#include "tour/steps.h"

#include <QFileInfo>

namespace folvane {

namespace {

ChoiceRow& row(Tour& tour, const QString& title)
{
    for (ChoiceRow* row : tour.hand.top().findChildren<ChoiceRow*>())
        if (row->text().startsWith(title))
            return *row;
    throw TourFailed(QStringLiteral("There is no row “%1”.").arg(title));
}

/// What the row says behind its title; empty while there is a spinner.
QString value(Tour& tour, const QString& title)
{
    const ChoiceRow& shown = row(tour, title);
    return shown.accessibleName().mid(shown.text().size() + 2);
}

void waitFor(Tour& tour, const QString& title, const QString& picture)
{
    waitUntil("The size of " + title, [&] { return !value(tour, title).isEmpty(); });
    tour.picture(picture);
}

QUrl photos(Tour& tour, const QString& name, int pages)
{
    const auto unwatched = tour.watchdog.lookAway();
    return putPhotos(tour.path(name), pages);
}

void saveSmall(Tour& tour)
{
    tour.press(row(tour, "Small").accessibleName());
    const QString size = value(tour, "Small");
    const QString path = tour.save("Smaller.pdf", [&tour] { tour.keys({Qt::Key_Return}); });
    const auto unwatched = tour.watchdog.lookAway();
    Tour::check(byteCount(QFileInfo(path).size()) == size, "the saved copy is as large as the sheet said");
    Tour::check(checkedTexts(path).size() == 12, "the small copy has all pages");
}

} // namespace

void showCompressing(Tour& tour)
{
    tour.open({photos(tour, "Summer in the mountains.pdf", 12)});
    tour.press("Compress");
    tour.movingPicture("compress-measuring");
    waitFor(tour, "Small", "compress-measured");
    tour.keys({Qt::Key_Down});
    Tour::check(row(tour, "Small").isChecked(), "the arrow keys choose");
    tour.picture("compress-by-keyboard");
    tour.press(row(tour, "Up to").accessibleName());
    tour.movingPicture("compress-searching");
    waitFor(tour, "Up to", "compress-up-to");
    tour.keys({Qt::Key_Tab, Qt::Key_Home});
    waitFor(tour, "Up to", "compress-out-of-reach");
    saveSmall(tour);

    tour.openSample("Annual report.pdf", 30);
    tour.press("Compress");
    waitFor(tour, "Small", "compress-mostly-text");
    tour.keys({Qt::Key_Escape});

    const QUrl gone = tour.sample("Old lease.pdf", 3);
    tour.open({gone});
    tour.waitForPages();
    writeFile(gone, "It was cut meanwhile.");
    tour.press("Compress");
    tour.movingPicture("compress-error");
    tour.keys({Qt::Key_Escape});
}

} // namespace folvane
