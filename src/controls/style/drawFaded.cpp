#include "controls/style/drawFaded.h"

#include <QImage>
#include <QPainter>

#include <cmath>

namespace folvane {

void drawFaded(QPainter& painter, const QRect& bounds, double opacity,
               const std::function<void(QPainter&)>& draw)
{
    if (opacity >= 1) {
        draw(painter);
        return;
    }
    const double scale = std::hypot(painter.deviceTransform().m11(), painter.deviceTransform().m12());
    QImage layer((QSizeF(bounds.size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    layer.setDevicePixelRatio(scale);
    layer.fill(Qt::transparent);
    QPainter onLayer(&layer);
    onLayer.translate(-bounds.topLeft());
    onLayer.setFont(painter.font());
    draw(onLayer);
    onLayer.end();
    painter.save();
    painter.setOpacity(painter.opacity() * opacity);
    painter.drawImage(bounds.topLeft(), layer);
    painter.restore();
}

} // namespace folvane
