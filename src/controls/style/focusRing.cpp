#include "controls/style/focusRing.h"

#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"

#include <QPainter>
#include <QWidget>

namespace folvane {

bool showsFocus(const QWidget& widget)
{
    return widget.hasFocus() && widget.window()->testAttribute(Qt::WA_KeyboardFocusChange);
}

void drawFocusRing(QPainter& painter, const QRectF& frame, double cornerRadius)
{
    constexpr double width = 2;
    constexpr double distance = 3; // from the frame to the middle of the ring
    const QRectF ring = frame.adjusted(-distance, -distance, distance, distance);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.strokePath(continuousRect(ring, cornerRadius + distance), QPen(theme::focus, width));
    painter.restore();
}

} // namespace folvane
