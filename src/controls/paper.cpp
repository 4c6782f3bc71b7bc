#include "controls/paper.h"

#include "controls/Spinner.h"
#include "controls/style/Shadow.h"
#include "controls/style/Theme.h"
#include "controls/style/icons.h"
#include "records/stampBox.h"

#include <QPainter>
#include <QPixmap>

#include <algorithm>

namespace folvane {

namespace {

constexpr double unknownProportion = 0.707; // width to height of a page that is not there yet
constexpr double cornerRadius = 4;          // of that page
constexpr double signShare = 0.4;           // of its shorter side
constexpr double largestIcon = 28;
constexpr double largestSpinner = 18;
const Shadow shadow{theme::faded(theme::black, 0.12), 6, 2};

void drawSign(QPainter& painter, const QRectF& box, const PaperPicture& paper)
{
    const double room = signShare * std::min(box.width(), box.height());
    if (!paper.isBroken) {
        drawSpinner(painter, box.center(), std::min(room, largestSpinner), paper.spinnerStep);
        return;
    }
    QRectF icon(0, 0, std::min(room, largestIcon), std::min(room, largestIcon));
    icon.moveCenter(box.center());
    drawIcon(painter, Icon::BrokenImage, icon, theme::secondaryText);
}

void drawStamps(QPainter& painter, const QRectF& page, const QList<StampPicture>& stamps)
{
    painter.save();
    painter.setClipRect(page, Qt::IntersectClip);
    for (const StampPicture& stamp : stamps)
        drawStamp(painter, page, stamp);
    painter.restore();
}

} // namespace

QRectF paperBox(const QRectF& room, const PaperPicture& paper)
{
    const QSizeF proportions = paper.picture ? QSizeF(paper.picture->size()) : QSizeF(unknownProportion, 1);
    QRectF box(QPointF(), proportions.scaled(room.size(), Qt::KeepAspectRatio));
    box.moveCenter(room.center());
    box.moveTopLeft(box.topLeft().toPoint()); // whole pixels keep the picture sharp
    return box;
}

void drawPaper(QPainter& painter, const QRectF& box, const PaperPicture& paper)
{
    if (paper.picture) {
        shadow.draw(painter, box, 0);
        painter.fillRect(box, Qt::white);
        painter.drawPixmap(box, *paper.picture, QRectF(paper.picture->rect()));
        if (!paper.stamps.isEmpty())
            drawStamps(painter, box, paper.stamps);
        return;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme::surface);
    painter.drawRoundedRect(box, cornerRadius, cornerRadius);
    drawSign(painter, box, paper);
}

void drawStamp(QPainter& painter, const QRectF& page, const StampPicture& stamp)
{
    if (stamp.picture.isNull())
        return;
    const StampBox box = stampBox(stamp.placement, page.size(), stamp.size);
    QRectF place(QPointF(), box.size);
    place.moveCenter(QPointF());
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.translate(page.topLeft() + box.center);
    painter.rotate(box.rotation);
    painter.drawImage(place, stamp.picture);
    painter.restore();
}

void drawSheet(QPainter& painter, const QRectF& box)
{
    shadow.draw(painter, box, 0);
    painter.fillRect(box, theme::surface);
    painter.setPen(QPen(theme::fieldBorder, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(box.adjusted(0.5, 0.5, -0.5, -0.5));
}

} // namespace folvane
