#include "controls/style/stylePieces.h"

#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"
#include "controls/style/icons.h"

#include <QPainter>
#include <QStyleOption>

namespace folvane::spinBoxes {

namespace {

constexpr double cornerRadius = 8;
constexpr int iconSide = 18;

void drawFrame(QPainter& painter, const QStyleOption& option)
{
    const bool enabled = option.state & QStyle::State_Enabled;
    const bool focused = enabled && option.state & QStyle::State_HasFocus;
    const double width = focused ? 2 : 1;
    const double half = width / 2;
    const QPainterPath frame =
        continuousRect(QRectF(option.rect).adjusted(half, half, -half, -half), cornerRadius - half);
    painter.fillPath(frame, enabled ? theme::surface : theme::background);
    painter.strokePath(frame, QPen(focused ? theme::focus : theme::fieldBorder, width));
}

QRectF iconIn(const QRect& part)
{
    QRectF box(0, 0, iconSide, iconSide);
    box.moveCenter(QRectF(part).center());
    return box;
}

// The arrow of one direction, marked while it is under the pointer or pressed.
void drawStep(QPainter& painter, const QStyleOptionSpinBox& box, QStyle::SubControl part, Icon arrow)
{
    const bool up = part == QStyle::SC_SpinBoxUp;
    const bool enabled =
        box.state & QStyle::State_Enabled
        && box.stepEnabled & (up ? QAbstractSpinBox::StepUpEnabled : QAbstractSpinBox::StepDownEnabled);
    const QRect place = partRect(box.rect, part);
    if (enabled && box.activeSubControls & part)
        painter.fillPath(continuousRect(QRectF(place).adjusted(0, 1, 0, -1), 4),
                         box.state & QStyle::State_Sunken ? theme::pressed : theme::hover);
    drawIcon(painter, arrow, iconIn(place), enabled ? theme::secondaryText : theme::disabledText);
}

} // namespace

QRect partRect(const QRect& box, QStyle::SubControl part)
{
    const QRect buttons(box.right() + 1 - arrowWidth, box.top() + 3, arrowWidth - 3, box.height() - 6);
    const int half = buttons.height() / 2;
    switch (part) {
    case QStyle::SC_SpinBoxUp: return buttons.adjusted(0, 0, 0, half - buttons.height());
    case QStyle::SC_SpinBoxDown: return buttons.adjusted(0, buttons.height() - half, 0, 0);
    case QStyle::SC_SpinBoxEditField: return box.adjusted(fields::padding, 2, -arrowWidth, -2);
    default: return box;
    }
}

void draw(QPainter& painter, const QStyleOptionSpinBox& box)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    drawFrame(painter, box);
    drawStep(painter, box, QStyle::SC_SpinBoxUp, Icon::ExpandLess);
    drawStep(painter, box, QStyle::SC_SpinBoxDown, Icon::ExpandMore);
    painter.restore();
}

} // namespace folvane::spinBoxes
