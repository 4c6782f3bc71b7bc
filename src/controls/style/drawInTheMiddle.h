#pragma once

class QPainter;
class QPixmap;
class QRectF;

namespace folvane {

/// Draws the picture as large as it is, on whole pixels of the screen, so that it stays sharp.
void drawInTheMiddle(QPainter& painter, const QRectF& room, const QPixmap& picture);

} // namespace folvane
