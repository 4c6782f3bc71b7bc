#include "tools/stamps/checkerboard.h"

#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"

#include <QPainter>

namespace folvane {

namespace {

constexpr double squareSide = 8;

/// Two by two squares, a pixel each.
QImage squares()
{
    QImage image(2, 2, QImage::Format_RGB32);
    image.fill(theme::surface);
    image.setPixelColor(1, 0, theme::checker);
    image.setPixelColor(0, 1, theme::checker);
    return image;
}

} // namespace

// A brush is clipped smoothly at the edge of the path; a clip would cut it in steps.
void drawCheckerboard(QPainter& painter, const QRectF& frame, double cornerRadius)
{
    QBrush brush(squares());
    brush.setTransform(QTransform::fromScale(squareSide, squareSide)
                       * QTransform::fromTranslate(frame.x(), frame.y()));
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.fillPath(continuousRect(frame, cornerRadius), brush);
    painter.restore();
}

} // namespace folvane
