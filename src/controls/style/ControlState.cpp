#include "controls/style/ControlState.h"

#include "controls/style/Theme.h"
#include "controls/style/focusRing.h"

#include <QPainter>
#include <QPainterPath>
#include <QWidget>

namespace folvane {

double ControlState::opacity() const
{
    if (!isEnabled)
        return disabledOpacity;
    return isPressed ? pressedOpacity : 1;
}

void ControlState::wash(QPainter& painter, const QPainterPath& ground, const QColor& hover,
                        const QColor& pressed) const
{
    if (isHovered() || (isEnabled && isPressed))
        painter.fillPath(ground, isPressed ? pressed : hover);
}

void ControlState::wash(QPainter& painter, const QPainterPath& ground) const
{
    wash(painter, ground, theme::hover, theme::pressed);
}

ControlState stateOf(const QWidget& control, bool isPressed)
{
    return {control.isEnabled(), control.underMouse(), isPressed, showsFocus(control)};
}

} // namespace folvane
