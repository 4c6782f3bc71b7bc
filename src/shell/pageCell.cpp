#include "shell/pageCell.h"

#include "controls/Shadow.h"
#include "controls/Spinner.h"
#include "controls/Theme.h"
#include "controls/appearance.h"
#include "controls/continuousRect.h"
#include "controls/icons.h"

#include <QPainter>

namespace folvane {

namespace {

constexpr int paperHeight = 200;
constexpr int widestCell = 210;
constexpr int framePadding = 6;
constexpr int frameHeight = paperHeight + 2 * framePadding;
constexpr double frameRadius = 10;
constexpr double unknownProportion = 0.707; // width to height of a page that is not there yet

QRectF centred(const QSizeF& proportions, const QRectF& within)
{
    QRectF box(QPointF(), proportions.scaled(within.size(), Qt::KeepAspectRatio));
    box.moveCenter(within.center());
    box.moveTopLeft(box.topLeft().toPoint()); // whole pixels keep the picture sharp
    return box;
}

void drawFrame(QPainter& painter, const QRectF& frame, const PageCell& cell)
{
    const QRectF outline = frame.adjusted(1.25, 1.25, -1.25, -1.25);
    if (cell.isSelected) {
        painter.setPen(QPen(theme::accent, 2.5));
        painter.setBrush(theme::accentSoft);
        painter.drawPath(continuousRect(outline, frameRadius));
    } else if (cell.hasKeyboard) {
        painter.setPen(QPen(theme::secondaryText, 1.5, Qt::DotLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(continuousRect(outline, frameRadius));
    }
}

const Shadow shadow{theme::faded(theme::black, 0.12), 6, 2};

QRectF roomInFrame(const QRect& rect)
{
    return QRectF(rect.left(), rect.top(), rect.width(), frameHeight)
        .adjusted(framePadding, framePadding, -framePadding, -framePadding);
}

QRectF paperBox(const QRectF& room, const PageCell& cell)
{
    return centred(cell.picture ? QSizeF(cell.picture->size()) : QSizeF(unknownProportion, 1), room);
}

void drawPaper(QPainter& painter, const QRectF& paper, const PageCell& cell)
{
    if (cell.picture) {
        shadow.draw(painter, paper, 0);
        painter.fillRect(paper, Qt::white);
        painter.drawPixmap(paper, *cell.picture, QRectF(cell.picture->rect()));
        return;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme::surface);
    painter.drawRoundedRect(paper, 4, 4);
    if (cell.state == PagePictures::State::Failed) {
        const QRectF box(paper.center() - QPointF(14, 14), QSizeF(28, 28));
        drawIcon(painter, Icon::BrokenImage, box, theme::secondaryText);
    } else {
        drawSpinner(painter, paper.center(), 18, cell.spinnerStep);
    }
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
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QRectF frame(rect.left(), rect.top(), rect.width(), frameHeight);
    drawFrame(painter, frame, cell);
    drawPaper(painter, paperBox(roomInFrame(rect), cell), cell);
    drawNumber(painter, rect.adjusted(0, frameHeight + 4, 0, 0), cell);
    painter.restore();
}

void drawSheet(QPainter& painter, const QRect& rect, const PageCell& cell)
{
    const QRectF paper = paperBox(roomInFrame(rect), cell);
    shadow.draw(painter, paper, 0);
    painter.fillRect(paper, theme::surface);
}

} // namespace folvane
