#include "controls/containers/AdaptiveGrid.h"

namespace folvane {

namespace {

int heightOf(const QLayoutItem& item, int width)
{
    return item.hasHeightForWidth() ? item.heightForWidth(width) : item.sizeHint().height();
}

} // namespace

AdaptiveGrid::AdaptiveGrid(const AdaptiveColumns& columns, QWidget* of) : QLayout(of), m_columns(columns)
{
    setContentsMargins(0, 0, 0, 0);
}

void AdaptiveGrid::addItem(QLayoutItem* item)
{
    m_items.emplace_back(item);
}

QLayoutItem* AdaptiveGrid::itemAt(int index) const
{
    return index >= 0 && index < count() ? m_items[size_t(index)].get() : nullptr;
}

QLayoutItem* AdaptiveGrid::takeAt(int index)
{
    if (!itemAt(index))
        return nullptr;
    QLayoutItem* taken = m_items[size_t(index)].release();
    m_items.erase(m_items.begin() + index);
    return taken;
}

int AdaptiveGrid::rowHeight(size_t first, int columns, int width) const
{
    int height = 0;
    for (size_t i = first; i < std::min(first + size_t(columns), m_items.size()); ++i)
        height = std::max(height, heightOf(*m_items[i], width));
    return height;
}

int AdaptiveGrid::heightForWidth(int width) const
{
    const QMargins margins = contentsMargins();
    const int inside = width - margins.left() - margins.right();
    const int columns = m_columns.in(inside);
    int height = m_items.empty() ? 0 : -m_columns.spacing;
    for (size_t first = 0; first < m_items.size(); first += size_t(columns))
        height += rowHeight(first, columns, m_columns.columnWidth(inside)) + m_columns.spacing;
    return height + margins.top() + margins.bottom();
}

QSize AdaptiveGrid::sizeHint() const
{
    return {m_columns.narrowest, heightForWidth(m_columns.narrowest)};
}

void AdaptiveGrid::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    const QRect inside = contentsRect();
    const int columns = m_columns.in(inside.width());
    QRect cell(inside.topLeft(), QSize(m_columns.columnWidth(inside.width()), 0));
    for (size_t i = 0; i < m_items.size(); ++i) {
        if (i % size_t(columns) == 0) {
            cell.moveTo(inside.left(), i == 0 ? inside.top() : cell.bottom() + 1 + m_columns.spacing);
            cell.setHeight(rowHeight(i, columns, cell.width()));
        }
        m_items[i]->setGeometry(cell);
        cell.translate(cell.width() + m_columns.spacing, 0);
    }
}

} // namespace folvane
