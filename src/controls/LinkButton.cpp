#include "controls/LinkButton.h"

#include "controls/appearance.h"
#include "controls/style/Theme.h"
#include "controls/style/focusRing.h"

#include <QPainter>

namespace folvane {

LinkButton::LinkButton(const QString& text, QWidget* parent) : QAbstractButton(parent)
{
    setText(text);
    setFont(interfaceFont(13, Weight::SemiBold));
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LinkButton::sizeHint() const
{
    return fontMetrics().size(Qt::TextSingleLine, text()) + QSize(2 * ringRoom, 2);
}

void LinkButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont shown = font();
    shown.setUnderline(isEnabled() && underMouse());
    painter.setFont(shown);
    painter.setPen(theme::faded(theme::accentDeep, !isEnabled() ? 0.4 : isDown() ? 0.75 : 1));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
    if (showsFocus(*this)) {
        painter.setPen(QPen(theme::focus, 2));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 5, 5);
    }
}

} // namespace folvane
