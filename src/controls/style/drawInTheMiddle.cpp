#include "controls/style/drawInTheMiddle.h"

#include <QPainter>

namespace folvane {

void drawInTheMiddle(QPainter& painter, const QRectF& room, const QPixmap& picture)
{
    const double scale = picture.devicePixelRatio();
    const QSizeF free = room.size() - picture.deviceIndependentSize();
    const QPointF corner = room.topLeft() + QPointF(free.width(), free.height()) / 2;
    painter.drawPixmap(QPointF((corner * scale).toPoint()) / scale, picture);
}

} // namespace folvane
