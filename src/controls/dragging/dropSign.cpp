#include "controls/dragging/dropSign.h"

#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"

#include <QPainter>

namespace folvane {

namespace {

constexpr double inset = 9;
constexpr double cornerRadius = 18;

} // namespace

void drawDropSign(QPainter& painter, const QRect& room)
{
    const QPainterPath frame =
        continuousRect(QRectF(room).adjusted(inset, inset, -inset, -inset), cornerRadius);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(frame, theme::accentSoft);
    painter.strokePath(frame, QPen(theme::accent, 2));
}

} // namespace folvane
