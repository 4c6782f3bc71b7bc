#include "shell/sidebar/SidebarRow.h"

#include "controls/appearance.h"
#include "controls/style/Theme.h"

#include <QKeyEvent>
#include <QPainter>

namespace folvane {

SidebarRow::SidebarRow(Icon icon, const QString& title, QWidget* parent)
    : PaintedButton(title, Qt::TabFocus, parent),
      m_icon(icon),
      m_iconColor(theme::accent),
      m_titleColor(theme::text)
{
    setFixedHeight(32);
}

void SidebarRow::setCurrent(bool current)
{
    if (current == m_current)
        return;
    m_current = current;
    setAccessibleDescription(current ? tr("Shown") : QString());
    update();
}

void SidebarRow::setColor(const QColor& color)
{
    m_iconColor = color;
    m_titleColor = color;
    update();
}

void SidebarRow::draw(QPainter& painter, const ControlState& state) const
{
    const QRectF frame = QRectF(rect()).adjusted(1, 1, -1, -1);
    painter.setPen(state.hasFocus ? QPen(theme::focus, 1.5) : QPen(Qt::NoPen));
    painter.setBrush(m_current              ? theme::accentSoft
                     : state.isUnderPointer ? theme::hover
                                            : QColor(Qt::transparent));
    painter.drawRoundedRect(frame, 8, 8);
    drawIcon(painter, m_icon, QRectF(10, (height() - 18) / 2.0, 18, 18), m_iconColor);

    const QRect room = rect().adjusted(38, 0, -roomAtRight(), 0);
    const QFont font = interfaceFont(13, m_current ? Weight::SemiBold : Weight::Regular);
    painter.setFont(font);
    painter.setPen(m_titleColor);
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter,
                     QFontMetrics(font).elidedText(text(), Qt::ElideRight, room.width()));
    drawAtRight(painter);
}

// Arrow keys would lead to any other button near it.
void SidebarRow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space)
        QAbstractButton::keyPressEvent(event);
    else
        event->ignore();
}

} // namespace folvane
