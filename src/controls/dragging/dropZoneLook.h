#pragma once

#include <QColor>
#include <QPainterPath>
#include <QRect>

class QPainter;

namespace folvane {

/// The shape of a place to drop files on that fills `room`.
QPainterPath dropZoneShape(const QRect& room);

/// Its ground, marked while files hang over it.
void fillDropZone(QPainter& painter, const QPainterPath& shape, bool isTargeted);
void outlineDropZone(QPainter& painter, const QPainterPath& shape, const QColor& line);

} // namespace folvane
