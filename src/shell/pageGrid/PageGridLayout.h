#pragma once

#include <QRect>

#include <utility>

namespace folvane {

/// Where the cells of the page grid stand, in content coordinates: as many equal columns as fit.
struct PageGridLayout {
    int count = 0; ///< cells
    int width = 0; ///< what the columns have, edges included

    int columns() const;
    int rows() const { return (count + columns() - 1) / columns(); }
    int height() const;
    QRect cell(int index) const;
    /// The cell under the point; -1 when there is none.
    int at(const QPoint& point) const;
    /// The cell before which something dropped at the point lands; `count` is the end.
    int dropTarget(const QPoint& point) const;
    /// First cell and one past the last of the rows that lie between the two heights.
    std::pair<int, int> between(int top, int bottom) const;
};

} // namespace folvane
