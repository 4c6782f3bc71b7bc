#include "controls/style/stylePieces.h"

#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"
#include "controls/style/focusRing.h"

#include <QPainter>
#include <QStyleOption>
#include <QWidget>

namespace folvane::toolButtons {

namespace {

constexpr double radius = 6;

} // namespace

void draw(QPainter& painter, const QStyleOptionToolButton& button, const QWidget* widget)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(button.rect).adjusted(1, 1, -1, -1);
    const bool enabled = button.state & QStyle::State_Enabled;
    if (enabled && button.state & QStyle::State_Sunken)
        painter.fillPath(continuousRect(frame, radius), theme::pressed);
    else if (enabled && button.state & QStyle::State_MouseOver)
        painter.fillPath(continuousRect(frame, radius), theme::hover);
    if (widget && showsFocus(*widget))
        painter.strokePath(continuousRect(frame.adjusted(0.25, 0.25, -0.25, -0.25), radius),
                           QPen(theme::accent, 1.5));
    QRect icon(QPoint(), button.iconSize);
    icon.moveCenter(button.rect.center());
    button.icon.paint(&painter, icon, Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled);
    painter.restore();
}

} // namespace folvane::toolButtons
