#include "controls/dragging/dropZoneLook.h"

#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"

#include <QPainter>

namespace folvane {

namespace {

constexpr double cornerRadius = 20;
constexpr double outline = 2;

} // namespace

QPainterPath dropZoneShape(const QRect& room)
{
    const double half = outline / 2;
    return continuousRect(QRectF(room).adjusted(half, half, -half, -half), cornerRadius - half);
}

void fillDropZone(QPainter& painter, const QPainterPath& shape, bool isTargeted)
{
    painter.fillPath(shape, isTargeted ? theme::accentSoft : theme::surface);
}

void outlineDropZone(QPainter& painter, const QPainterPath& shape, const QColor& line)
{
    painter.strokePath(shape, QPen(line, outline));
}

} // namespace folvane
