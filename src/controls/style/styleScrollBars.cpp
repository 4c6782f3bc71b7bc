#include "controls/style/stylePieces.h"

#include "controls/style/Theme.h"

#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace folvane::scrollBars {

namespace {

// From `from` for `length` pixels along the bar, over its whole width.
QRect along(const QStyleOptionSlider& bar, int from, int length)
{
    if (bar.orientation == Qt::Vertical)
        return {bar.rect.x(), bar.rect.y() + from, bar.rect.width(), length};
    return {bar.rect.x() + from, bar.rect.y(), length, bar.rect.height()};
}

} // namespace

QRect partRect(const QStyleOptionSlider& bar, QStyle::SubControl part)
{
    const int length = bar.orientation == Qt::Vertical ? bar.rect.height() : bar.rect.width();
    const qint64 steps = qint64(bar.maximum) - bar.minimum + bar.pageStep;
    const int shown = steps > 0 ? static_cast<int>(qint64(length) * bar.pageStep / steps) : length;
    const int thumb = std::min(length, bar.maximum == bar.minimum ? length : std::max(shown, shortestThumb));
    const int start = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                      length - thumb, bar.upsideDown);
    QRect rect;
    switch (part) {
    case QStyle::SC_ScrollBarGroove: rect = along(bar, 0, length); break;
    case QStyle::SC_ScrollBarSlider: rect = along(bar, start, thumb); break;
    case QStyle::SC_ScrollBarSubPage: rect = along(bar, 0, start); break;
    case QStyle::SC_ScrollBarAddPage: rect = along(bar, start + thumb, length - start - thumb); break;
    default: return {}; // there are no arrows
    }
    return QStyle::visualRect(bar.direction, bar.rect, rect);
}

void draw(QPainter& painter, const QStyleOptionSlider& bar, const QRect& thumb)
{
    if (bar.maximum <= bar.minimum)
        return;
    const bool held = bar.state & QStyle::State_Sunken && bar.activeSubControls & QStyle::SC_ScrollBarSlider;
    const bool lit = held || bar.state & QStyle::State_MouseOver;
    const double air = lit ? 2 : 3; // at the sides
    const QRectF shape = bar.orientation == Qt::Vertical ? QRectF(thumb).adjusted(air, 2, -air, -2)
                                                         : QRectF(thumb).adjusted(2, air, -2, -air);
    const double radius = std::min(shape.width(), shape.height()) / 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(lit ? theme::scrollThumbHover : theme::scrollThumb);
    painter.drawRoundedRect(shape, radius, radius);
    painter.restore();
}

} // namespace folvane::scrollBars
