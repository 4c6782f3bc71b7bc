#include "controls/sheets/NoteBanner.h"
#include "platform/files/writeFile.h"
#include "tools/stamps/NewStampSheet.h"
#include "tour/steps.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

namespace folvane {

namespace {

const QSize photoSize(2400, 1600);

/// Paper under a lamp.
QImage paper()
{
    QImage photo(photoSize, QImage::Format_RGB32);
    QPainter painter(&photo);
    QLinearGradient light(0, 0, photo.width(), photo.height());
    light.setColorAt(0, QColor(236, 232, 222));
    light.setColorAt(1, QColor(186, 180, 170));
    painter.fillRect(photo.rect(), light);
    return photo;
}

QImage signedPaper()
{
    QImage photo = paper();
    QPainter painter(&photo);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(28, 40, 110), 16, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPainterPath name({700, 900});
    name.cubicTo(760, 300, 960, 420, 880, 1000);
    name.cubicTo(900, 700, 1080, 640, 1060, 940);
    name.cubicTo(1100, 620, 1280, 660, 1240, 930);
    name.cubicTo(1400, 500, 1500, 760, 1700, 820);
    painter.drawPath(name);
    painter.drawLine(680, 1080, 1740, 1030);
    return photo;
}

QUrl put(Tour& tour, const QString& name, const QImage& photo)
{
    const auto unwatched = tour.watchdog.lookAway();
    Tour::check(photo.save(tour.path(name)), name + " can be written");
    return QUrl::fromLocalFile(tour.path(name));
}

NewStampSheet& openSheet(Tour& tour, const StampSource& source)
{
    auto* sheet = new NewStampSheet(tour.model, source, &tour.window);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->open();
    return *sheet;
}

void showError(Tour& tour, const StampSource& source, const QString& picture)
{
    const auto* banner = openSheet(tour, source).findChild<NoteBanner*>();
    waitUntil("The error", [banner] { return banner->isVisible(); });
    tour.picture(picture);
    Tour::check(!tour.hand.finds("Save"), "what failed cannot be saved");
    tour.keys({Qt::Key_Escape});
}

void showPhotos(Tour& tour)
{
    openSheet(tour, {put(tour, "Signed.jpg", signedPaper())});
    tour.movingPicture("stamp-working");
    waitUntil("The stamp", [&tour] { return tour.hand.finds("Save"); });
    tour.picture("stamp-preview");
    tour.type("Signature of the president of the committee for the copper harbour and its lanterns, in blue",
              "stamp-preview-long-name");
    tour.keys({Qt::Key_Return});
    Tour::check(tour.model.stamps.stamps.value().last().name.endsWith("in blue"), "the stamp has its name");

    const QUrl broken = QUrl::fromLocalFile(tour.path("Broken.jpg"));
    writeFile(broken, "This was never a picture.");
    showError(tour, {broken}, "stamp-of-no-picture");
    showError(tour, {put(tour, "Blank.jpg", paper())}, "stamp-without-ink");
}

} // namespace

void showMakingStamps(Tour& tour)
{
    showPhotos(tour);
}

} // namespace folvane
