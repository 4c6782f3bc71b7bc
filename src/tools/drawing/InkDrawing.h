#pragma once

#include "stamps/StampInk.h"

#include <QList>
#include <QPainterPath>
#include <QPointF>
#include <QSize>

class QPainter;

namespace folvane {

/// The places where the pen was, one after the other, in device-independent pixels.
using Stroke = QList<QPointF>;

inline constexpr double strokeWidth = 3;

/// The line of a stroke, from its first place to its last: smooth, since its curves meet half-way between places. Empty for
/// fewer than two of them.
QPainterPath strokePath(const Stroke& stroke);

/// Draws the line as it looks everywhere, on screen and in what comes out. The painter has to be antialiasing.
void drawStroke(QPainter& painter, const Stroke& stroke, StampInk ink);

/// What was drawn by hand, all of it in one ink.
struct InkDrawing {
    QSize size;
    StampInk ink = StampInk::Blue;
    QList<Stroke> strokes;
};

/// On a transparent ground, at four times its size; empty when there is no memory for it.
QByteArray pngOf(const InkDrawing& drawing);

} // namespace folvane
