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

/// How far ink gets from the line of its stroke.
inline constexpr double inkReach = 3;

/// The line of a stroke, from its first place to its last: smooth, since its curves meet half-way between places. Empty for
/// fewer than two of them.
QPainterPath strokePath(const Stroke& stroke);
/// Those parts of it whose ink can be in `area`.
QPainterPath strokePath(const Stroke& stroke, const QRectF& area);

/// Draws a line as it looks everywhere, on screen and in what comes out. The painter has to be antialiasing.
void drawInk(QPainter& painter, const QPainterPath& line, StampInk ink);

/// What was drawn by hand, all of it in one ink.
struct InkDrawing {
    QSize size;
    StampInk ink = StampInk::Blue;
    QList<Stroke> strokes;
};

/// On a transparent ground, at four times its size; empty when there is no memory for it.
QByteArray pngOf(const InkDrawing& drawing);

} // namespace folvane
