#pragma once

#include "records/StampPlacement.h"

#include <QImage>
#include <QList>

class QPainter;
class QPixmap;
class QRectF;

namespace folvane {

/// A stamp as views show it.
struct StampPicture {
    StampPlacement placement;
    QSize size;     ///< of the library's picture
    QImage picture; ///< that one, or a smaller copy; null when it has none
};

/// A page as views show it.
struct PaperPicture {
    const QPixmap* picture = nullptr; ///< null while there is none
    bool isBroken = false;            ///< there will be none
    int spinnerStep = 0;
    QList<StampPicture> stamps = {}; ///< what lies on it, the lowest first
};

/// The largest sheet of the page's proportions in the middle of `room`.
QRectF paperBox(const QRectF& room, const PaperPicture& paper);

/// Draws the sheet into its box: its picture with its stamps over a soft shadow; while there is none, the sign of work under way.
void drawPaper(QPainter& painter, const QRectF& box, const PaperPicture& paper);
/// Draws the stamp where it lies on a page that is shown in `page`, beyond its edges too.
void drawStamp(QPainter& painter, const QRectF& page, const StampPicture& stamp);
/// An empty sheet.
void drawSheet(QPainter& painter, const QRectF& box);

} // namespace folvane
