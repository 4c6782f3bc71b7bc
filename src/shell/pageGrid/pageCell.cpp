#include "shell/pageGrid/pageCell.h"

#include "controls/appearance.h"
#include "controls/paper.h"
#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"
#include "controls/style/drawFaded.h"
#include "controls/style/focusRing.h"
#include "controls/style/icons.h"

#include <QPainter>

namespace folvane {

namespace {

constexpr int paperHeight = 200;
constexpr int widestCell = 210;
constexpr int framePadding = 6;
constexpr int frameHeight = paperHeight + 2 * framePadding;
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

QRectF roomInFrame(const QRect& rect, const PageCell& cell)
{
    const QRectF room = QRectF(rect.left(), rect.top(), rect.width(), frameHeight)
                            .adjusted(framePadding, framePadding, -framePadding, -framePadding);
    return cell.isStack ? room.adjusted(0, stackStep, -stackStep, 0) : room;
}

PaperPicture paperOf(const PageCell& cell)
{
    return {cell.picture, cell.state == PagePictures::State::Failed, cell.spinnerStep};
}

void drawPapers(QPainter& painter, const QRect& rect, const PageCell& cell)
{
    const QRectF box = paperBox(roomInFrame(rect, cell), paperOf(cell));
    if (cell.isStack)
        drawSheet(painter, box.translated(stackStep, -stackStep));
    drawPaper(painter, box, paperOf(cell));
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

QSize largestPaper()
{
    return {widestCell - 2 * framePadding, paperHeight};
}

void drawPageCell(QPainter& painter, const QRect& rect, const PageCell& cell)
{
    drawFaded(painter, rect, cell.isLifted ? liftedOpacity : 1, [&](QPainter& onto) {
        onto.save();
        onto.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        drawFrame(onto, QRectF(rect.left(), rect.top(), rect.width(), frameHeight), cell);
        drawPapers(onto, rect, cell);
        drawNumber(onto, rect.adjusted(0, frameHeight + 4, 0, 0), cell);
        onto.restore();
    });
}

} // namespace folvane
