#include "controls/LinkButton.h"

#include "controls/appearance.h"
#include "controls/style/Theme.h"

namespace folvane {

namespace {

constexpr int iconSide = 16;
constexpr int iconGap = 6;

} // namespace

LinkButton::LinkButton(const QString& text, QWidget* parent)
    : PaintedButton(text, Qt::TabFocus, parent), m_color(theme::accentDeep)
{
    setFont(interfaceFont(13, Weight::SemiBold));
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void LinkButton::setSymbol(Icon icon)
{
    m_symbol = icon;
    updateGeometry();
    update();
}

void LinkButton::setColor(const QColor& color)
{
    m_color = color;
    update();
}

int LinkButton::symbolWidth() const
{
    return m_symbol ? iconSide + iconGap : 0;
}

QSize LinkButton::sizeHint() const
{
    const int air = m_symbol ? 8 : 2; // above and below
    return fontMetrics().size(Qt::TextSingleLine, text()) + QSize(symbolWidth() + 2 * ringRoom, air);
}

void LinkButton::draw(QPainter& painter, const ControlState& state) const
{
    QFont shown = font();
    shown.setUnderline(state.isEnabled && state.isUnderPointer);
    painter.setFont(shown);
    const QColor color = theme::faded(m_color, state.opacity());
    painter.setPen(color);
    painter.drawText(rect().adjusted(symbolWidth(), 0, 0, 0), Qt::AlignCenter | Qt::TextSingleLine, text());
    if (m_symbol)
        drawIcon(painter, *m_symbol, QRectF(ringRoom, (height() - iconSide) / 2.0, iconSide, iconSide),
                 color);
    if (state.hasFocus) {
        painter.setPen(QPen(theme::focus, 2));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 5, 5);
    }
}

} // namespace folvane
