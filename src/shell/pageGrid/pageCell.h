#pragma once

#include "engine/PagePictures.h"

class QPainter;

namespace folvane {

/// What one cell of the page grid shows.
struct PageCell {
    int number = 1; ///< position in the document, from 1
    bool isSelected = false;
    bool hasStamps = false;
    bool isLifted = false;    ///< it is being dragged
    bool isStack = false;     ///< another sheet looks out below the page
    bool hasKeyboard = false; ///< the keys act from here
    PagePictures::State state = PagePictures::State::Waiting;
    const QPixmap* picture = nullptr;
    int spinnerStep = 0;
};

/// A frame with its padding, a gap, and the line with the number.
inline constexpr int pageCellHeight = 200 + 2 * 6 + 4 + 16;

/// No picture of a page is shown larger than this.
QSize largestPaper();

/// Draws the cell into `rect`: the page's picture in a frame, its number below.
void drawPageCell(QPainter& painter, const QRect& rect, const PageCell& cell);

} // namespace folvane
