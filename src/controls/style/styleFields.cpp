#include "controls/style/stylePieces.h"

#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"

#include <QPainter>
#include <QStyleOption>
#include <QWidget>

namespace folvane::fields {

void drawLineEdit(QPainter& painter, const QStyleOptionFrame& frame)
{
    constexpr double radius = 8;
    const bool enabled = frame.state & QStyle::State_Enabled;
    if (frame.lineWidth <= 0) { // inside another field, which draws the border
        painter.fillRect(frame.rect, theme::surface);
        return;
    }
    const bool focused = enabled && frame.state & QStyle::State_HasFocus;
    const double width = focused ? 2 : 1;
    const double half = width / 2;
    const QPainterPath path =
        continuousRect(QRectF(frame.rect).adjusted(half, half, -half, -half), radius - half);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(path, enabled ? theme::surface : theme::background);
    painter.strokePath(path, QPen(focused ? theme::focus : theme::fieldBorder, width));
    painter.restore();
}

void drawFrame(QPainter& painter, const QRect& rect)
{
    painter.save();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(theme::hairline);
    painter.drawRect(rect.adjusted(0, 0, -1, -1));
    painter.restore();
}

void drawToolTip(QPainter& painter, const QRect& rect, const QWidget* tip)
{
    const bool rounded = tip && tip->testAttribute(Qt::WA_TranslucentBackground);
    const QPainterPath path = continuousRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), rounded ? 6 : 0);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(path, theme::surface);
    painter.strokePath(path, QPen(theme::fieldBorder, 1));
    painter.restore();
}

void drawFocus(QPainter& painter, const QRect& rect)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.strokePath(continuousRect(QRectF(rect).adjusted(1, 1, -1, -1), 5), QPen(theme::focus, 2));
    painter.restore();
}

} // namespace folvane::fields
