#include "shell/sidebar/BarIcon.h"

#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"

namespace folvane {

namespace {

constexpr int side = 28;
constexpr int iconInset = 5;
constexpr double cornerRadius = 8;

} // namespace

BarIcon::BarIcon(Icon icon, const QString& name, const QString& tip, QWidget* parent)
    : PaintedButton(name, Qt::TabFocus, parent), m_icon(icon)
{
    setToolTip(tip);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize BarIcon::sizeHint() const
{
    return {side, side};
}

void BarIcon::draw(QPainter& painter, const ControlState& state) const
{
    const QPainterPath frame = continuousRect(QRectF(rect()).adjusted(1, 1, -1, -1), cornerRadius);
    state.wash(painter, frame);
    if (state.hasFocus)
        painter.strokePath(frame, QPen(theme::focus, 1.5));
    drawIcon(painter, m_icon, QRectF(rect()).marginsRemoved(QMarginsF() + iconInset), theme::accent);
}

} // namespace folvane
