#include "controls/style/stylePieces.h"

#include "controls/style/Shadow.h"
#include "controls/style/continuousRect.h"
#include "controls/style/icons.h"
#include "controls/style/mnemonics.h"

#include <QMenu>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace folvane::menus {

namespace {

constexpr double panelRadius = 10;
constexpr double itemRadius = 6;
constexpr int itemPadding = 10; // left and right
constexpr int itemHeight = 30;
constexpr int separatorHeight = 9;
constexpr int iconSide = 16;
constexpr int iconColumn = iconSide + 8;
constexpr int shortcutGap = 28;
constexpr int arrowRoom = 20;

int textFlags()
{
    constexpr int plain = Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextShowMnemonic;
    return showsMnemonics() ? plain : plain | Qt::TextHideMnemonic;
}

bool hasIconColumn(const QStyleOptionMenuItem& item)
{
    return item.menuHasCheckableItems || item.maxIconWidth > 0;
}

QColor textColor(const QStyleOptionMenuItem& item, const QMenu* menu)
{
    if (!(item.state & QStyle::State_Enabled))
        return theme::disabledText;
    const QAction* action = menu ? menu->actionAt(item.rect.center()) : nullptr;
    return action && action->property("destructive").toBool() ? theme::danger : theme::text;
}

void drawMark(QPainter& painter, const QStyleOptionMenuItem& item, const QRect& box, const QColor& color)
{
    if (item.checkType != QStyleOptionMenuItem::NotCheckable && item.checked)
        drawIcon(painter, Icon::Check, box, color);
    else if (!item.icon.isNull())
        item.icon.paint(&painter, box, Qt::AlignCenter,
                        item.state & QStyle::State_Enabled ? QIcon::Normal : QIcon::Disabled);
}

} // namespace

int shadowRoom(const QWidget* menu)
{
    return menu && menu->testAttribute(Qt::WA_TranslucentBackground) ? 12 : 0;
}

void drawPanel(QPainter& painter, const QRect& rect, const QWidget* menu)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const int room = shadowRoom(menu);
    const QRectF frame = rect.adjusted(room, room, -room, -room);
    const double radius = room > 0 ? panelRadius : 0;
    if (room > 0)
        drawCard(painter, frame, radius, shadows::popup);
    else
        painter.fillRect(frame, theme::surface);
    painter.strokePath(continuousRect(frame.adjusted(0.5, 0.5, -0.5, -0.5), radius),
                       QPen(room > 0 ? theme::hairline : theme::fieldBorder, 1));
    painter.restore();
}

QSize itemSize(const QStyleOptionMenuItem& item, const QSize& text)
{
    if (item.menuItemType == QStyleOptionMenuItem::Separator)
        return {2 * itemPadding, separatorHeight};
    int width = text.width() + 2 * itemPadding + (hasIconColumn(item) ? iconColumn : 0);
    if (item.text.contains(QLatin1Char('\t')))
        width += shortcutGap;
    if (item.menuItemType == QStyleOptionMenuItem::SubMenu)
        width += arrowRoom;
    return {width, std::max(itemHeight, text.height() + 12)};
}

void drawItem(QPainter& painter, const QStyleOptionMenuItem& item, const QMenu* menu)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QRect room = item.rect.adjusted(itemPadding, 0, -itemPadding, 0);
    if (item.menuItemType == QStyleOptionMenuItem::Separator) {
        painter.fillRect(QRect(room.left(), room.center().y(), room.width(), 1), theme::hairline);
        painter.restore();
        return;
    }
    const bool enabled = item.state & QStyle::State_Enabled;
    if (enabled && item.state & QStyle::State_Selected)
        painter.fillPath(continuousRect(item.rect, itemRadius), theme::accentSoft);
    const QColor color = textColor(item, menu);
    if (hasIconColumn(item)) {
        drawMark(painter, item, {room.left(), room.center().y() - iconSide / 2 + 1, iconSide, iconSide},
                 color);
        room.setLeft(room.left() + iconColumn);
    }
    painter.setFont(item.font);
    painter.setPen(color);
    painter.drawText(room, textFlags() | Qt::AlignLeft, item.text.section(QLatin1Char('\t'), 0, 0));
    painter.setPen(enabled ? theme::secondaryText : theme::disabledText);
    painter.drawText(room, textFlags() | Qt::AlignRight, item.text.section(QLatin1Char('\t'), 1, 1));
    if (item.menuItemType == QStyleOptionMenuItem::SubMenu)
        drawIcon(painter, Icon::ChevronRight, QRectF(room.right() - 13, room.center().y() - 8, 16, 16),
                 enabled ? theme::secondaryText : theme::disabledText);
    painter.restore();
}

void drawBarItem(QPainter& painter, const QStyleOptionMenuItem& item)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(item.rect, theme::chrome);
    if (item.state & QStyle::State_Enabled && item.state & QStyle::State_Selected)
        painter.fillPath(continuousRect(item.rect.adjusted(0, 1, 0, -1), itemRadius),
                         item.state & QStyle::State_Sunken ? theme::accentSoft : theme::hover);
    painter.setPen(item.state & QStyle::State_Enabled ? theme::text : theme::disabledText);
    painter.drawText(item.rect, textFlags() | Qt::AlignHCenter, item.text);
    painter.restore();
}

} // namespace folvane::menus
