#include "tools/MergeList.h"

#include "controls/Theme.h"

#include <QPainter>
#include <QScrollBar>

#include <algorithm>

// A row that is taken hold of hangs at the pointer, in the list alone, and the others show where it would land.

namespace folvane {

namespace {

constexpr int scrollZone = 40;     // pixels at the top and the bottom
constexpr int scrollInterval = 16; // ms
constexpr int mostPerStep = 14;    // pixels

} // namespace

void MergeList::beginDrag(const QPoint& at)
{
    const QRect rect = rectOf(m_pressed.row);
    m_drag = Drag{m_rows.item(m_pressed.row).id, at.y() - rect.top(), at.y()};
    viewport()->setCursor(Qt::ClosedHandCursor);
    m_scrolling.start(scrollInterval, this);
}

void MergeList::dragTo(int y)
{
    m_drag->pointer = y;
    viewport()->update();
}

void MergeList::endDrag(bool drops)
{
    if (!m_drag)
        return;
    const int row = m_rows.rowOf(m_drag->item);
    const int to = dropRow();
    m_drag.reset();
    m_pressed = {};
    m_scrolling.stop();
    viewport()->unsetCursor();
    viewport()->update();
    if (drops)
        move(row, to);
}

// The row takes the place that it covers most, and those between make room.
int MergeList::dropRow() const
{
    const int row = m_rows.rowOf(m_drag->item);
    const double top = m_drag->pointer - m_drag->grabbedAt - rectOf(0).top();
    const int place = std::clamp(qRound(top / mergeRowHeight), 0, m_rows.rowCount() - 1);
    return place > row ? place + 1 : place;
}

void MergeList::scrollWhileDragging()
{
    const int above = scrollZone - m_drag->pointer;
    const int below = m_drag->pointer - (viewport()->height() - scrollZone);
    const int far = std::max({above, below, 0});
    const int step = std::min(far / 3, mostPerStep);
    if (step > 0)
        verticalScrollBar()->setValue(verticalScrollBar()->value() + (above > 0 ? -step : step));
}

void MergeList::drawDrag(QPainter& painter) const
{
    const int row = m_rows.rowOf(m_drag->item);
    if (row < 0)
        return;
    const int to = dropRow();
    const QRect home = rectOf(row);
    if (to != row && to != row + 1) {
        const int y = std::max(rectOf(0).top() + to * mergeRowHeight, 2); // at the top half of it is outside
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(theme::accent, 4, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(cardOf(home).left() + 2, y, cardOf(home).right() - 2, y);
    }
    QRect hanging = home;
    hanging.moveTop(m_drag->pointer - m_drag->grabbedAt);
    drawLiftedRow(painter, hanging, rowAt(row));
}

} // namespace folvane
