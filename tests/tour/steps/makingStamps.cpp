#include "controls/sheets/NoteBanner.h"
#include "platform/files/writeFile.h"
#include "stamps/ReadyStampRenderer.h"
#include "tools/drawing/DrawingCanvas.h"
#include "tools/readyStamps/ReadyStampsPicker.h"
#include "tools/stamps/openNewStampSheet.h"
#include "tour/steps.h"

#include <QImage>
#include <QPainter>

namespace folvane {

namespace {

const QSize photoSize(2400, 1600);

/// A name as somebody signs it, in a box of 240 by 160.
QList<QPainterPath> signature()
{
    QPainterPath name({60, 95});
    name.cubicTo(70, 20, 100, 30, 85, 110);
    name.cubicTo(90, 60, 115, 55, 110, 95);
    name.cubicTo(118, 50, 140, 55, 132, 94);
    name.cubicTo(150, 40, 165, 75, 190, 80);
    QPainterPath flourish({50, 118});
    flourish.cubicTo(100, 100, 160, 128, 196, 104);
    QPainterPath accent({148, 48});
    accent.lineTo(158, 40);
    return {name, flourish, accent};
}

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
    painter.scale(10, 10);
    painter.setPen(QPen(QColor(28, 40, 110), 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const QPainterPath& line : signature())
        painter.drawPath(line);
    return photo;
}

QUrl put(Tour& tour, const QString& name, const QImage& photo)
{
    const auto unwatched = tour.watchdog.lookAway();
    Tour::check(photo.save(tour.path(name)), name + " can be written");
    return QUrl::fromLocalFile(tour.path(name));
}

QWidget& openSheet(Tour& tour, const StampSource& source)
{
    openNewStampSheet(tour.model, source, tour.window);
    return tour.hand.top();
}

void waitForStamp(Tour& tour, const QString& picture)
{
    waitUntil("The stamp", [&tour] { return tour.hand.finds("Save"); });
    tour.picture(picture);
}

void waitForClose(Tour& tour)
{
    waitUntil("The closing of the sheet", [&tour] { return &tour.hand.top() == &tour.window; });
}

const StampRecord& newest(Tour& tour)
{
    return tour.model.stamps.stamps.value().last();
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
    waitForStamp(tour, "stamp-preview");
    tour.type("Signature of the president of the committee for the copper harbour and its lanterns, in blue",
              "stamp-preview-long-name");
    tour.keys({Qt::Key_Return});
    Tour::check(newest(tour).name.endsWith("in blue"), "the stamp has its name");

    const QUrl broken = QUrl::fromLocalFile(tour.path("Broken.jpg"));
    writeFile(broken, "This was never a picture.");
    showError(tour, {broken}, "stamp-of-no-picture");
    showError(tour, {put(tour, "Blank.jpg", paper())}, "stamp-without-ink");
}

void sign(Tour& tour, const QWidget& canvas)
{
    for (const QPainterPath& line : signature()) {
        QList<QPoint> places;
        for (int i = 0; i <= 48; ++i)
            places.append(canvas.mapToGlobal((line.pointAtPercent(i / 48.0) * 2).toPoint() - QPoint(0, 70)));
        tour.hand.draw(places);
    }
}

void showDrawing(Tour& tour)
{
    const auto* canvas = openSheet(tour, {StampSource::Drawing()}).findChild<DrawingCanvas*>();
    tour.picture("drawing-pad");
    Tour::check(!tour.hand.finds("Clear") && !tour.hand.finds("Use This Signature"),
                "an empty pad has nothing to clear or use");
    sign(tour, *canvas);
    tour.picture("drawing-signed");
    tour.press("Red", "drawing-in-red");
    tour.press("Clear");
    sign(tour, *canvas);
    tour.press("Use This Signature");
    waitForStamp(tour, "drawing-preview");
    tour.keys({Qt::Key_Return});
    Tour::check(newest(tour).name == "Signature", "a drawing is a signature");
}

void readyPicture(Tour& tour, const QString& name)
{
    const auto* picker = tour.hand.top().findChild<ReadyStampsPicker*>();
    waitUntil("The pictures of all ready stamps", [picker] { return picker->isComplete(); });
    tour.picture(name);
}

void showReady(Tour& tour)
{
    const QString today = ReadyStampRenderer::today();
    openSheet(tour, {StampSource::Ready()});
    readyPicture(tour, "ready-red");
    tour.press("Blue");
    readyPicture(tour, "ready-blue");
    tour.hand.tabTo("Add today's date");
    tour.keys({Qt::Key_Space});
    readyPicture(tour, "ready-dated-by-keyboard");
    tour.press("Black");
    readyPicture(tour, "ready-black");
    tour.hand.tabTo("CONFIDENTIAL · " + today);
    tour.picture("ready-by-keyboard");
    tour.keys({Qt::Key_Return});
    waitForClose(tour);
    Tour::check(newest(tour).name == "CONFIDENTIAL · " + today, "a ready stamp is called after its words");

    openSheet(tour, {StampSource::Ready()});
    readyPicture(tour, "ready-remembered");
    tour.press("Add today's date");
    tour.hand.tabTo("Your own word, like PAID IN CASH");
    tour.type("paid in cash ");
    readyPicture(tour, "ready-own-word");
    tour.keys({Qt::Key_Return});
    waitForClose(tour);
    Tour::check(newest(tour).name == "PAID IN CASH", "one's own words become capitals");
}

} // namespace

void showMakingStamps(Tour& tour)
{
    showPhotos(tour);
    showDrawing(tour);
    showReady(tour);
}

} // namespace folvane
