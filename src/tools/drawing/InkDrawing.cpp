#include "tools/drawing/InkDrawing.h"

#include "stamps/stampPng.h"

#include <QImage>
#include <QPainter>

namespace folvane {

namespace {

constexpr int outputScale = 4;

} // namespace

QPainterPath strokePath(const Stroke& stroke)
{
    QPainterPath path;
    if (stroke.size() < 2)
        return path;
    path.moveTo(stroke.first());
    for (qsizetype i = 0; i + 1 < stroke.size(); ++i)
        path.quadTo(stroke[i], (stroke[i] + stroke[i + 1]) / 2);
    path.lineTo(stroke.last());
    return path;
}

void drawStroke(QPainter& painter, const Stroke& stroke, StampInk ink)
{
    const QPen pen(colorOf(ink), strokeWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter.strokePath(strokePath(stroke), pen);
}

QByteArray pngOf(const InkDrawing& drawing)
{
    QImage canvas(drawing.size * outputScale, QImage::Format_ARGB32_Premultiplied);
    if (canvas.isNull())
        return {};
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(outputScale, outputScale);
    for (const Stroke& stroke : drawing.strokes)
        drawStroke(painter, stroke, drawing.ink);
    painter.end();
    return pngOf(canvas);
}

} // namespace folvane
