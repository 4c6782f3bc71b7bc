#pragma once

#include <QMargins>

class QPainter;
class QRectF;
class QWidget;

namespace folvane {

/// The widget has the focus and its user works with the keyboard, so that it is worth marking.
bool showsFocus(const QWidget& widget);

/// The room that the ring takes around a frame.
inline constexpr QMargins focusRingMargins{4, 4, 4, 4};

/// Draws the ring of the keyboard focus around `frame`, with a little air between.
void drawFocusRing(QPainter& painter, const QRectF& frame, double cornerRadius);

} // namespace folvane
