#include "controls/LinkButton.h"

#include "controls/appearance.h"
#include "controls/style/Theme.h"

namespace folvane {

LinkButton::LinkButton(const QString& text, QWidget* parent) : PaintedButton(text, Qt::TabFocus, parent)
{
    setFont(interfaceFont(13, Weight::SemiBold));
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LinkButton::sizeHint() const
{
    return fontMetrics().size(Qt::TextSingleLine, text()) + QSize(2 * ringRoom, 2);
}

void LinkButton::draw(QPainter& painter, const ControlState& state) const
{
    QFont shown = font();
    shown.setUnderline(state.isEnabled && state.isUnderPointer);
    painter.setFont(shown);
    painter.setPen(theme::faded(theme::accentDeep, state.opacity()));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
    if (state.hasFocus) {
        painter.setPen(QPen(theme::focus, 2));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 5, 5);
    }
}

} // namespace folvane
