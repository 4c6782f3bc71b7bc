#include "shell/pageGrid/PageGridLayout.h"

#include "controls/containers/AdaptiveColumns.h"
#include "shell/pageGrid/pageCell.h"

#include <algorithm>

namespace folvane {

namespace {

constexpr int padding = 24;
constexpr AdaptiveColumns adaptive{pageCellMetrics.narrowest, 18};
constexpr int rowSpacing = 22;
constexpr int rowStep = pageCellMetrics.height() + rowSpacing;

int columnWidth(const PageGridLayout& layout)
{
    return std::clamp(adaptive.columnWidth(layout.width - 2 * padding), adaptive.narrowest,
                      pageCellMetrics.widest);
}

int left(const PageGridLayout& layout)
{
    const int columns = layout.columns();
    const int used = columns * columnWidth(layout) + (columns - 1) * adaptive.spacing;
    return std::max(padding, (layout.width - used) / 2);
}

} // namespace

int PageGridLayout::columns() const
{
    return adaptive.in(width - 2 * padding);
}

int PageGridLayout::height() const
{
    return count == 0 ? 0 : rows() * rowStep - rowSpacing + 2 * padding;
}

QRect PageGridLayout::cell(int index) const
{
    const int columnStep = columnWidth(*this) + adaptive.spacing;
    return {left(*this) + index % columns() * columnStep, padding + index / columns() * rowStep,
            columnWidth(*this), pageCellMetrics.height()};
}

int PageGridLayout::at(const QPoint& point) const
{
    const auto [first, last] = between(point.y(), point.y() + 1);
    for (int index = first; index < last; ++index) {
        if (cell(index).contains(point))
            return index;
    }
    return -1;
}

int PageGridLayout::dropTarget(const QPoint& point) const
{
    const int row = std::max(0, (point.y() - padding + rowSpacing / 2) / rowStep);
    const int first = std::min(row * columns(), count);
    const int last = std::min(first + columns(), count);
    for (int index = first; index < last; ++index) {
        if (point.x() <= cell(index).right())
            return index;
    }
    return last;
}

std::pair<int, int> PageGridLayout::between(int top, int bottom) const
{
    const int firstRow = std::max(0, (top - padding) / rowStep);
    const int lastRow = bottom <= padding ? 0 : (bottom - padding + rowStep - 1) / rowStep;
    return {std::min(firstRow * columns(), count), std::clamp(lastRow * columns(), 0, count)};
}

} // namespace folvane
