#pragma once

#include <QRect>

#include <functional>

class QPainter;

namespace folvane {

/// Does `draw`, and shows all of what it drew within `bounds` at `opacity` (0 to 1) as one picture, so that what
/// lies below something else does not shine through it.
void drawFaded(QPainter& painter, const QRect& bounds, double opacity,
               const std::function<void(QPainter&)>& draw);

} // namespace folvane
