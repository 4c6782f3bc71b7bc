#pragma once

class QPainter;
class QPixmap;
class QRectF;

namespace folvane {

/// A page as views show it.
struct PaperPicture {
    const QPixmap* picture = nullptr; ///< null while there is none
    bool isBroken = false;            ///< there will be none
    int spinnerStep = 0;
};

/// The largest sheet of the page's proportions in the middle of `room`.
QRectF paperBox(const QRectF& room, const PaperPicture& paper);

/// Draws the sheet into its box: its picture over a soft shadow; while there is none, the sign of work under way.
void drawPaper(QPainter& painter, const QRectF& box, const PaperPicture& paper);
/// An empty sheet.
void drawSheet(QPainter& painter, const QRectF& box);

} // namespace folvane
