#include "tools/merge/MergeList.h"

#include <QPainter>

#include <algorithm>

// A row that is taken hold of hangs at the pointer, in the list alone, and the others make room where it would land.

namespace folvane {

void MergeList::beginDrag(const QPoint& at)
{
    const QRect rect = rectOf(m_pressed.row);
    m_drag = Drag{m_rows.item(m_pressed.row).id, at.y() - rect.top(), at.y()};
    viewport()->setCursor(Qt::ClosedHandCursor);
    scroller().begin();
}

void MergeList::dragTo(const QPoint& pointer)
{
    m_drag->pointer = pointer.y();
    scroller().follow(pointer);
    viewport()->update();
}

void MergeList::endDrag(bool drops)
{
    if (!m_drag)
        return;
    const int row = m_rows.rowOf(m_drag->item);
    const int place = row < 0 ? row : landingPlace();
    m_drag.reset();
    m_pressed = {};
    scroller().end();
    viewport()->unsetCursor();
    viewport()->update();
    if (drops)
        move(row, place - row);
}

// That which the row covers most.
int MergeList::landingPlace() const
{
    const double top = m_drag->pointer - m_drag->grabbedAt - rectOf(0).top();
    return std::clamp(qRound(top / mergeRowHeight), 0, m_rows.rowCount() - 1);
}

// Where the row would stand if the one that is dragged were let go.
int MergeList::placeOf(int row) const
{
    const int from = m_drag ? m_rows.rowOf(m_drag->item) : -1;
    if (from < 0)
        return row;
    const int to = landingPlace();
    if (row == from)
        return to;
    const int withoutIt = row > from ? row - 1 : row;
    return withoutIt >= to ? withoutIt + 1 : withoutIt;
}

void MergeList::drawDrag(QPainter& painter) const
{
    const int row = m_rows.rowOf(m_drag->item);
    if (row < 0)
        return;
    drawLandingPlace(painter, rectOf(landingPlace()));
    QRect hanging = rectOf(row);
    hanging.moveTop(m_drag->pointer - m_drag->grabbedAt);
    drawLiftedRow(painter, hanging, rowAt(row));
}

} // namespace folvane
