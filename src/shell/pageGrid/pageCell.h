#pragma once

#include "controls/paper.h"

#include <QRect>
#include <QSize>

class QPainter;

namespace folvane {

/// The measures of a cell: a frame around the paper, a gap, and the line with the number.
struct PageCellMetrics {
    int narrowest = 150;
    int widest = 210;
    int paperHeight = 200;
    int framePadding = 6;
    int gap = 4;
    int numberHeight = 16;

    constexpr int frameHeight() const { return paperHeight + 2 * framePadding; }
    constexpr int height() const { return frameHeight() + gap + numberHeight; }
    /// No picture of a page is shown larger than this.
    constexpr QSize largestPaper() const { return {widest - 2 * framePadding, paperHeight}; }
};
inline constexpr PageCellMetrics pageCellMetrics;

/// What one cell of the page grid shows.
struct PageCell {
    int number = 1; ///< position in the document, from 1
    bool isSelected = false;
    bool hasStamps = false;
    bool isLifted = false;    ///< it is being dragged
    bool isStack = false;     ///< another sheet looks out below the page
    bool hasKeyboard = false; ///< the keys act from here
    PaperPicture paper;
};

/// Draws the cell into `rect`: the page's picture in a frame, its number below.
void drawPageCell(QPainter& painter, const QRect& rect, const PageCell& cell);

} // namespace folvane
