#include "tools/readyStamps/ReadyStampTile.h"

#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"
#include "controls/style/drawInTheMiddle.h"

namespace folvane {

namespace {

constexpr int tileHeight = 70;
constexpr int padding = 10;
constexpr double cornerRadius = 10;

} // namespace

ReadyStampTile::ReadyStampTile(QWidget* parent) : PaintedButton(QString(), Qt::TabFocus, parent)
{
    setCursor(Qt::PointingHandCursor);
}

void ReadyStampTile::setPicture(const QPixmap& picture)
{
    m_picture = picture;
    update();
}

QSize ReadyStampTile::sizeHint() const
{
    return {2 * tileHeight, tileHeight};
}

QSize ReadyStampTile::room(int width)
{
    return {width - 2 * padding, tileHeight - 2 * padding};
}

void ReadyStampTile::draw(QPainter& painter, const ControlState& state) const
{
    const QPainterPath ground = continuousRect(rect(), cornerRadius);
    painter.fillPath(ground, theme::surface);
    state.wash(painter, ground);
    if (!m_picture.isNull())
        drawInTheMiddle(painter, rect(), m_picture);
    painter.strokePath(continuousRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius - 0.5),
                       QPen(theme::hairline, 1));
    if (state.hasFocus)
        painter.strokePath(continuousRect(QRectF(rect()).adjusted(1, 1, -1, -1), cornerRadius - 1),
                           QPen(theme::focus, 2));
}

} // namespace folvane
