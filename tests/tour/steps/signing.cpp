#include "stamps/ReadyStampRenderer.h"
#include "tools/sign/PageArea.h"
#include "tools/sign/SignView.h"
#include "tour/steps.h"

#include <QBuffer>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace folvane {

namespace {

/// A word in handwriting, as a sheet that a pen went over would give it.
StampMaker::Stamp signature()
{
    QImage picture(900, 300, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainterPath line(QPointF(40, 220));
    for (int i = 0; i < 6; ++i)
        line.cubicTo(60 + i * 130, -120 + i * 20, 200 + i * 110, 420 - i * 30, 170 + i * 130, 190 - i * 10);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.strokePath(line, QPen(QColor(20, 40, 150), 9, Qt::SolidLine, Qt::RoundCap));
    painter.end();
    QBuffer png;
    picture.save(&png, "PNG");
    return {png.data(), picture.width(), picture.height()};
}

void fillLibrary(Tour& tour)
{
    const auto unwatched = tour.watchdog.lookAway();
    tour.model.stamps.add(signature(), "Anna's signature");
    for (const QString word : {"PAID", "APPROVED BY THE BOARD OF DIRECTORS"})
        tour.model.stamps.add(*ReadyStampRenderer::render(word, "Nov 23, 2026", StampInk::Red), word);
}

const std::vector<StampPlacement>& stampsOf(Tour& tour, size_t page = 0)
{
    return currentFile(tour.model)->pages.value()[page].stamps;
}

PageArea& area(Tour& tour)
{
    return tour.window.signView().pageArea();
}

/// A place of the page, told in fractions of it, on the screen.
QPoint onScreen(Tour& tour, QPointF place)
{
    const QRectF page = area(tour).pageRect();
    return area(tour).mapToGlobal(
        QPointF(page.left() + place.x() * page.width(), page.top() + place.y() * page.height()).toPoint());
}

/// The handle that stands there, seen from the stamp's middle while it is upright; in pixels beyond its edge.
QPoint handle(Tour& tour, const StampPlacement& stamp, QPointF side, QPointF beyond)
{
    const QRectF page = area(tour).pageRect();
    const QSizeF picture = tour.model.stampPictures.sizeOf(stamp.stampID);
    const double width = stamp.width * page.width();
    const QSizeF half = QSizeF(width, width * picture.height() / picture.width()) / 2;
    return onScreen(tour, stamp.center)
           + QPointF(side.x() * half.width() + beyond.x(), side.y() * half.height() + beyond.y()).toPoint();
}

void waitForPage(Tour& tour)
{
    waitUntil("The coming of the large page", [&tour] { return !area(tour).pageRect().isEmpty(); });
}

/// Moves, enlarges and turns the stamp by its handles.
void dragStamp(Tour& tour)
{
    const StampPlacement placed = stampsOf(tour).back();
    tour.hand.pull(onScreen(tour, placed.center), onScreen(tour, {0.6, 0.8}),
                   [&tour] { tour.picture("signing-moving"); });
    const StampPlacement moved = stampsOf(tour).back();
    Tour::check(QLineF(moved.center, {0.6, 0.8}).length() < 0.005, "a stamp follows the mouse");

    const QPoint corner = handle(tour, moved, {1, 1}, {4, 4});
    tour.hand.pull(corner, corner + QPoint(60, 20), [&tour] { tour.picture("signing-resizing"); });
    const StampPlacement larger = stampsOf(tour).back();
    Tour::check(larger.width > 1.3 * moved.width && larger.center == moved.center,
                "the corner makes it larger about its middle");

    const QPoint top = handle(tour, larger, {0, -1}, {0, -34});
    const QPoint middle = onScreen(tour, larger.center);
    const auto around = [&](double degrees) {
        return middle + QTransform().rotate(degrees).map(QPointF(top - middle)).toPoint();
    };
    tour.hand.pull(top, around(-30), [&tour] { tour.picture("signing-turning"); });
    Tour::check(std::abs(stampsOf(tour).back().rotation + 30) < 1, "the handle above turns it");
    tour.hand.pull(around(-30), around(2.5));
    Tour::check(stampsOf(tour).back().rotation == 0, "upright pulls");
}

void moveByKeys(Tour& tour)
{
    const StampPlacement before = stampsOf(tour).back();
    tour.keys({Qt::Key_Left, Qt::Key_Plus, Qt::Key_BracketRight});
    tour.hand.key(Qt::Key_Right, Qt::ShiftModifier);
    const StampPlacement after = stampsOf(tour).back();
    Tour::check(std::abs(after.center.x() - before.center.x() + 0.009) < 1e-9
                    && std::abs(after.width - before.width - 0.01) < 1e-9 && after.rotation == 1,
                "keys move, enlarge and turn the stamp");
    tour.hand.key(Qt::Key_Backtab, Qt::ShiftModifier);
    tour.hand.key(Qt::Key_Delete);
    Tour::check(stampsOf(tour) == std::vector{after},
                "Tab walks the stamps, and Delete removes the one it reached");
    tour.hand.tabTo("Anna's signature");
    tour.keys({Qt::Key_Escape}, "signing-nothing-selected");
    Tour::check(!tour.hand.finds("Remove from Page"), "Escape selects nothing");
}

} // namespace

void showSigning(Tour& tour)
{
    tour.emptyLibrary();
    const OpenFilePtr file = tour.openSample("Annual report.pdf", 12, Paper::Mixed);
    tour.press("Sign & Stamp");
    waitForPage(tour);
    tour.picture("signing-without-stamps");
    fillLibrary(tour);
    tour.picture("signing-with-stamps");
    tour.press("PAID");
    tour.press("Anna's signature", "signing-placed");
    Tour::check(stampsOf(tour).size() == 2 && stampsOf(tour).back().center == QPointF(0.54, 0.66),
                "each stamp lies a little beside the one before it");
    dragStamp(tour);
    moveByKeys(tour);

    tour.hand.click(onScreen(tour, stampsOf(tour).back().center));
    tour.press("Add to All Pages", "signing-all-pages");
    tour.hand.key(Qt::Key_Down, Qt::ControlModifier);
    waitForPage(tour);
    tour.picture("signing-next-page");
    tour.press("Done");
    tour.waitForPages();
    tour.picture("pages-with-stamps");
    tour.select({1});
    tour.press("Rotate Right");
    waitUntil("The turning of a page with its stamp",
              [&tour] { return stampsOf(tour, 1).front().rotation == stampsOf(tour).front().rotation + 90; });
    tour.hand.drag(
        tour.pagePoint(1), tour.pagePoint(4), [&tour] { tour.picture("dragging-a-stamped-page"); },
        Hand::End::Cancel);
    tour.hand.doubleClick(tour.pagePoint(1));
    waitForPage(tour);
    tour.picture("signing-turned-page");
    const QStringList pages = checkedTexts(tour.save("Signed.pdf", [&tour] { tour.press("Save As…"); }));
    Tour::check(pages.size() == 12 && pages.last() == "Chapter 12",
                "the signed copy has all pages and their text");

    tour.press("Done");
    tour.press("More");
    tour.press("Add to Merge", "merge-with-stamps");
    const QUuid used = file->pages.value().front().stamps.front().stampID;
    tour.model.deleteStamp(used);
    Tour::check(!file->hasStamps(), "a deleted stamp leaves all pages");
}

void showSigningSizes(Tour& tour)
{
    tour.emptyLibrary();
    fillLibrary(tour);
    tour.openSample("A letter with a name that is much longer than there is any room for.pdf",
                    tour.options.manyPages);
    tour.press("Sign & Stamp");
    waitForPage(tour);
    tour.press("APPROVED BY THE BOARD OF DIRECTORS");
    tour.hand.pull(onScreen(tour, {0.5, 0.62}), onScreen(tour, {0.02, 0.01}));
    for (const QSize& size : {tour.window.minimumSize(), QSize(1920, 1080)}) {
        tour.resize(size);
        waitForPage(tour);
        tour.picture(QStringLiteral("signing-%1x%2").arg(size.width()).arg(size.height()));
    }
}

} // namespace folvane
