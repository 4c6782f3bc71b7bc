#include "shell/pageCell.h"

#include "controls/Spinner.h"
#include "controls/Theme.h"
#include "controls/appearance.h"
#include "controls/icons.h"

#include <QPainter>

namespace folvane {

namespace {

constexpr int frameHeight = 200;
constexpr int widestCell = 210;
constexpr int framePadding = 6;
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
        painter.drawRoundedRect(outline, frameRadius, frameRadius);
    } else if (cell.hasKeyboard) {
        painter.setPen(QPen(theme::secondaryText, 1.5, Qt::DotLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(outline, frameRadius, frameRadius);
    }
}

// A soft edge below the paper, so that white pages stand out from the light ground.
void drawShadow(QPainter& painter, const QRectF& paper)
{
    painter.setPen(Qt::NoPen);
    for (int spread = 4; spread >= 1; --spread) {
        painter.setBrush(QColor(0, 0, 0, 9));
        const QRectF edge = paper.adjusted(-spread, -spread, spread, spread).translated(0, 2);
        painter.drawRoundedRect(edge, spread, spread);
    }
}

void drawPaper(QPainter& painter, const QRectF& room, const PageCell& cell)
{
    if (cell.picture) {
        const QRectF paper = centred(cell.picture->size(), room);
        drawShadow(painter, paper);
        painter.fillRect(paper, Qt::white);
        painter.drawPixmap(paper, *cell.picture, QRectF(cell.picture->rect()));
        return;
    }
    const QRectF paper = centred(QSizeF(unknownProportion, 1), room);
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
    painter.setFont(interfaceFont(12, cell.isSelected ? Weight::Bold : Weight::Medium));
    painter.setPen(cell.isSelected ? theme::accentDeep : theme::secondaryText);
    painter.drawText(line, Qt::AlignHCenter | Qt::AlignVCenter, QString::number(cell.number));
}

} // namespace

QSize largestPaper()
{
    return {widestCell - 2 * framePadding, frameHeight - 2 * framePadding};
}

void drawPageCell(QPainter& painter, const QRect& rect, const PageCell& cell)
{
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QRectF frame(rect.left(), rect.top(), rect.width(), frameHeight);
    drawFrame(painter, frame, cell);
    drawPaper(painter, frame.adjusted(framePadding, framePadding, -framePadding, -framePadding), cell);
    drawNumber(painter, rect.adjusted(0, frameHeight + 4, 0, 0), cell);
    painter.restore();
}

} // namespace folvane
