#pragma once

#include "controls/paper.h"
#include "controls/style/ControlState.h"

#include <QRect>
#include <QString>

namespace folvane {

/// What one row of the list to merge shows.
struct MergeRow {
    int number = 1; ///< position in the list, from 1
    QString name;
    QString pages; ///< how many, in words
    PaperPicture paper;
    bool hasKeyboard = false; ///< the keys act on it
    bool isUnderPointer = false;
    ControlState remove; ///< its button
};

/// Rows follow each other at this distance; a gap belongs to it.
inline constexpr int mergeRowHeight = 72;

/// No picture of a page is shown larger than this.
inline constexpr QSize largestRowPaper{52, 48};

/// Parts of a row that stands in `rect`: what is seen of it, where it is taken hold of, and its button at the end.
QRect cardOf(const QRect& rect);
QRect gripOf(const QRect& rect);
QRect removeButtonOf(const QRect& rect);

void drawMergeRow(QPainter& painter, const QRect& rect, const MergeRow& row);
/// The same as it hangs at the pointer.
void drawLiftedRow(QPainter& painter, const QRect& rect, const MergeRow& row);
/// The place that is kept free for it.
void drawLandingPlace(QPainter& painter, const QRect& rect);

} // namespace folvane
