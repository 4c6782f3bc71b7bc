#include "shell/pageGrid/pageCell.h"

#include "controls/appearance.h"
#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"
#include "controls/style/drawFaded.h"
#include "controls/style/focusRing.h"
#include "controls/style/icons.h"

#include <QPainter>

namespace folvane {

namespace {

constexpr PageCellMetrics metrics = pageCellMetrics;
constexpr double frameRadius = 10;
constexpr double liftedOpacity = 0.4;
constexpr int stackStep = 9; // from one sheet to the next

void drawFrame(QPainter& painter, const QRectF& frame, const PageCell& cell)
{
    const QRectF outline = frame.adjusted(1.25, 1.25, -1.25, -1.25);
    if (cell.isSelected) {
        painter.setPen(QPen(theme::accent, 2.5));
        painter.setBrush(theme::accentSoft);
        painter.drawPath(continuousRect(outline, frameRadius));
    }
    if (cell.hasKeyboard)
        drawFocusRing(painter, frame, frameRadius);
}

QRectF roomInFrame(const QRectF& frame, const PageCell& cell)
{
    constexpr int padding = metrics.framePadding;
    const QRectF room = frame.adjusted(padding, padding, -padding, -padding);
    return cell.isStack ? room.adjusted(0, stackStep, -stackStep, 0) : room;
}

void drawPapers(QPainter& painter, const QRectF& frame, const PageCell& cell)
{
    const QRectF box = paperBox(roomInFrame(frame, cell), cell.paper);
    if (cell.isStack)
        drawSheet(painter, box.translated(stackStep, -stackStep));
    drawPaper(painter, box, cell.paper);
}

void drawNumber(QPainter& painter, const QRect& line, const PageCell& cell)
{
    constexpr int stampSide = 12;
    constexpr int stampGap = 4;
    const QString number = QString::number(cell.number);
    const QFont font = interfaceFont(12, cell.isSelected ? Weight::Bold : Weight::Medium);
    const int textWidth = QFontMetrics(font).horizontalAdvance(number);
    const int rowWidth = textWidth + (cell.hasStamps ? stampGap + stampSide : 0);
    const QRect text(line.center().x() - rowWidth / 2, line.top(), textWidth + 1, line.height());
    painter.setFont(font);
    painter.setPen(cell.isSelected ? theme::accentDeep : theme::secondaryText);
    painter.drawText(text, Qt::AlignCenter, number);
    if (cell.hasStamps)
        drawIcon(painter, Icon::Gesture,
                 QRectF(text.right() + stampGap, line.center().y() - stampSide / 2.0, stampSide, stampSide),
                 theme::accent);
}

} // namespace

void drawPageCell(QPainter& painter, const QRect& rect, const PageCell& cell)
{
    const QRectF frame(rect.left(), rect.top(), rect.width(), metrics.frameHeight());
    drawFaded(painter, rect, cell.isLifted ? liftedOpacity : 1, [&](QPainter& onto) {
        onto.save();
        onto.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        drawFrame(onto, frame, cell);
        drawPapers(onto, frame, cell);
        drawNumber(onto, rect.adjusted(0, metrics.frameHeight() + metrics.gap, 0, 0), cell);
        onto.restore();
    });
}

} // namespace folvane
