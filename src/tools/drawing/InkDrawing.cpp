#include "tools/drawing/InkDrawing.h"

#include "stamps/stampPng.h"

#include <QImage>
#include <QPainter>

namespace folvane {

namespace {

constexpr int outputScale = 4;
constexpr double penWidth = 3;

bool mayInk(const QRectF& area, const QPolygonF& curve)
{
    const QRectF box = curve.boundingRect();
    return box.adjusted(-inkReach, -inkReach, inkReach, inkReach).intersects(area);
}

} // namespace

QPainterPath strokePath(const Stroke& stroke)
{
    constexpr double far = 1e6;
    return strokePath(stroke, QRectF(-far, -far, 2 * far, 2 * far));
}

// Where parts are left out, the ends of the others are out of sight.
QPainterPath strokePath(const Stroke& stroke, const QRectF& area)
{
    QPainterPath path;
    if (stroke.size() < 2)
        return path;
    path.moveTo(stroke.first());
    QPointF from = stroke.first();
    for (qsizetype i = 0; i + 1 < stroke.size(); ++i) {
        const QPointF to = (stroke[i] + stroke[i + 1]) / 2;
        mayInk(area, {{from, stroke[i], to}}) ? path.quadTo(stroke[i], to) : path.moveTo(to);
        from = to;
    }
    path.lineTo(stroke.last());
    return path;
}

void drawInk(QPainter& painter, const QPainterPath& line, StampInk ink)
{
    painter.strokePath(line, QPen(colorOf(ink), penWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
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
        drawInk(painter, strokePath(stroke), drawing.ink);
    painter.end();
    return pngOf(canvas);
}

} // namespace folvane
