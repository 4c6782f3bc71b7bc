#include "tools/merge/mergeRow.h"

#include "controls/appearance.h"
#include "controls/style/Shadow.h"
#include "controls/style/continuousRect.h"
#include "controls/style/icons.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace folvane {

namespace {

constexpr int gap = 8;     // between cards
constexpr int margin = 28; // left and right of them
constexpr int padding = 14;
constexpr int spacing = 12;
constexpr int gripSide = 20;
constexpr int removeSide = 32;
constexpr int removeIcon = 20;
constexpr int narrowestNumber = 26; // room for three digits
constexpr double radius = 12;
const Shadow rest{theme::faded(theme::black, 0.05), 6, 2};
const Shadow lifted{theme::faded(theme::black, 0.18), 16, 6};

void drawLine(QPainter& painter, const QRect& box, const QFont& font, const QColor& color,
              const QString& text)
{
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(box, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetrics(font).elidedText(text, Qt::ElideRight, box.width()));
}

void drawRemove(QPainter& painter, const QRect& box, const MergeRow& row)
{
    QPainterPath ground;
    ground.addEllipse(box);
    row.remove.wash(painter, ground);
    QRectF icon(0, 0, removeIcon, removeIcon);
    icon.moveCenter(QRectF(box).center());
    drawIcon(painter, Icon::Remove, icon, row.remove.isUnderPointer ? theme::danger : theme::disabledText);
}

// Gives the width that the number takes.
int drawNumber(QPainter& painter, const QRect& box, int number)
{
    const QFont font = interfaceFont(13);
    const QString text = QString::number(number);
    const int width = std::max(narrowestNumber, QFontMetrics(font).horizontalAdvance(text));
    painter.setFont(font);
    painter.setPen(theme::secondaryText);
    painter.drawText(QRect(box.left(), box.top(), width, box.height()), Qt::AlignCenter, text);
    return width;
}

void drawCaption(QPainter& painter, const QRect& box, const MergeRow& row)
{
    const QFont nameFont = interfaceFont(14, Weight::Medium);
    const QFont pagesFont = interfaceFont(12);
    const int nameHeight = QFontMetrics(nameFont).height();
    const int pagesHeight = QFontMetrics(pagesFont).height();
    const int top = box.center().y() - (nameHeight + 2 + pagesHeight) / 2;
    drawLine(painter, {box.left(), top, box.width(), nameHeight}, nameFont, theme::text, row.name);
    drawLine(painter, {box.left(), top + nameHeight + 2, box.width(), pagesHeight}, pagesFont,
             theme::secondaryText, row.pages);
}

void drawCardWith(QPainter& painter, const QRect& rect, const MergeRow& row, const Shadow& shadow)
{
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QRect card = cardOf(rect);
    drawCard(painter, card, radius, shadow);
    if (row.isUnderPointer)
        painter.fillPath(continuousRect(card, radius), theme::hoverSoft);
    painter.strokePath(continuousRect(QRectF(card).adjusted(0.5, 0.5, -0.5, -0.5), radius),
                       QPen(theme::hairline, 1));
    if (row.hasKeyboard)
        drawFocusRing(painter, card, radius);

    const QRect grip = gripOf(rect);
    drawIcon(painter, Icon::DragHandle, grip, theme::secondaryText);
    QRect room = card;
    room.setLeft(grip.right() + 1 + spacing / 2);
    room.setLeft(room.left() + drawNumber(painter, room, row.number) + spacing);
    const QRect paper(room.left(), card.center().y() - largestRowPaper.height() / 2, largestRowPaper.width(),
                      largestRowPaper.height());
    drawPaper(painter, paperBox(paper, row.paper), row.paper);
    room.setLeft(paper.right() + 1 + spacing);
    room.setRight(removeButtonOf(rect).left() - spacing);
    drawCaption(painter, room, row);
    drawRemove(painter, removeButtonOf(rect), row);
    painter.restore();
}

} // namespace

QRect cardOf(const QRect& rect)
{
    return rect.adjusted(margin, gap / 2, -margin, -gap / 2);
}

QRect gripOf(const QRect& rect)
{
    return {cardOf(rect).left() + padding, rect.center().y() - gripSide / 2 + 1, gripSide, gripSide};
}

QRect removeButtonOf(const QRect& rect)
{
    return {cardOf(rect).right() + 1 - padding - removeSide + 4, rect.center().y() - removeSide / 2 + 1,
            removeSide, removeSide};
}

void drawMergeRow(QPainter& painter, const QRect& rect, const MergeRow& row)
{
    drawCardWith(painter, rect, row, rest);
}

void drawLandingPlace(QPainter& painter, const QRect& rect)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF place = QRectF(cardOf(rect)).adjusted(1, 1, -1, -1);
    painter.fillPath(continuousRect(place, radius), theme::accentSoft);
    painter.strokePath(continuousRect(place, radius), QPen(theme::accent, 2));
    painter.restore();
}

void drawLiftedRow(QPainter& painter, const QRect& rect, const MergeRow& row)
{
    drawCardWith(painter, rect, row, lifted);
}

} // namespace folvane
