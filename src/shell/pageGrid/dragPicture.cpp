#include "shell/pageGrid/dragPicture.h"

#include "controls/appearance.h"
#include "controls/style/Shadow.h"
#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"
#include "shell/pageGrid/pageCell.h"

#include <QPainter>

#include <algorithm>

namespace folvane {

namespace {

constexpr int cellWidth = 120;
constexpr int room = 20; // around the cell, for what stands out of it
constexpr int border = 6;
constexpr int badgeHeight = 22;

// A ground of its own: over other pages the cell alone could not be told from them.
void drawGround(QPainter& painter, const QRectF& ground)
{
    shadows::popup.draw(painter, ground, 12);
    painter.fillPath(continuousRect(ground, 12), theme::background);
    painter.setPen(QPen(theme::hairline, 1));
    painter.drawPath(continuousRect(ground.adjusted(0.5, 0.5, -0.5, -0.5), 12));
}

void drawBadge(QPainter& painter, const QPointF& topRight, int pages)
{
    const QString text = QString::number(pages);
    const QFont font = interfaceFont(12, Weight::SemiBold);
    const double width = std::max(badgeHeight, QFontMetrics(font).horizontalAdvance(text) + 12);
    const QRectF badge(topRight.x() - width, topRight.y(), width, badgeHeight);
    painter.setPen(QPen(theme::surface, 2));
    painter.setBrush(theme::accent);
    painter.drawRoundedRect(badge, badgeHeight / 2.0, badgeHeight / 2.0);
    painter.setFont(font);
    painter.setPen(theme::surface);
    painter.drawText(badge, Qt::AlignCenter, text);
}

} // namespace

QPixmap dragPicture(PageCell cell, int pages, double scale)
{
    cell.hasKeyboard = false;
    cell.isLifted = false;
    cell.isStack = pages > 1;
    const QRect box(QPoint(room, room), QSize(cellWidth, pageCellMetrics.height()));
    QPixmap picture(box.marginsAdded(QMargins(room, room, room, room)).size() * scale);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    drawGround(painter, QRectF(box).adjusted(-border, -border, border, border));
    drawPageCell(painter, box, cell);
    if (pages > 1)
        drawBadge(painter, QPointF(box.right() + 16, box.top() - 14), pages);
    return picture;
}

} // namespace folvane
