#pragma once

class QPainter;
class QRect;

namespace folvane {

/// Shows on the ground of a view that what hangs over it would be taken there.
void drawDropSign(QPainter& painter, const QRect& room);

} // namespace folvane
