#pragma once

class QPainter;
class QRectF;

namespace folvane {

/// Fills the rectangle with grey squares on white, which show where what is drawn over them can be seen through.
void drawCheckerboard(QPainter& painter, const QRectF& frame, double cornerRadius = 0);

} // namespace folvane
