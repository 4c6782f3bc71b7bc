#include "controls/dragging/DropZone.h"

#include "controls/appearance.h"
#include "controls/dragging/droppedFiles.h"
#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"
#include "controls/style/icons.h"

#include <QDropEvent>
#include <QMimeData>
#include <QPainter>

namespace folvane {

namespace {

constexpr double cornerRadius = 20;
constexpr double outline = 2;
constexpr int padding = 40; // above and below
constexpr int spacing = 10;
constexpr int iconSide = 40;

QFont titleFont()
{
    return interfaceFont(18, Weight::SemiBold);
}

QFont detailFont()
{
    return interfaceFont(13);
}

int contentHeight()
{
    return iconSide + spacing + QFontMetrics(titleFont()).height() + spacing
           + QFontMetrics(detailFont()).height();
}

// One line in the middle of the top of `room`, which then begins below it.
void drawLine(QPainter& painter, QRect& room, const QFont& font, const QColor& color, const QString& text)
{
    painter.setFont(font);
    painter.setPen(color);
    const QFontMetrics metrics(font);
    const QRect line(room.left(), room.top(), room.width(), metrics.height());
    painter.drawText(line, Qt::AlignCenter, metrics.elidedText(text, Qt::ElideRight, room.width()));
    room.setTop(line.bottom() + 1 + spacing);
}

} // namespace

DropZone::DropZone(QWidget* parent) : QAbstractButton(parent)
{
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
    setAccessibleName(tr("Drop PDFs or images here"));
    setAccessibleDescription(tr("or click to open. Images become pages of a new PDF."));
}

QSize DropZone::sizeHint() const
{
    return {600, contentHeight() + 2 * padding};
}

QSize DropZone::minimumSizeHint() const
{
    return {200, sizeHint().height()};
}

void DropZone::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double half = outline / 2;
    const QPainterPath frame =
        continuousRect(QRectF(rect()).adjusted(half, half, -half, -half), cornerRadius - half);
    painter.fillPath(frame, m_targeted ? theme::accentSoft : theme::surface);
    if (!m_targeted && (isDown() || underMouse()))
        painter.fillPath(frame, isDown() ? theme::accentSoft : theme::hoverSoft);
    painter.strokePath(frame, QPen(m_targeted          ? theme::accent
                                   : showsFocus(*this) ? theme::focus
                                                       : theme::hairline,
                                   outline));

    QRect room = rect().adjusted(16, 0, -16, 0);
    room.setTop((height() - contentHeight()) / 2);
    const QRectF icon(QRectF(room).center().x() - iconSide / 2.0, room.top(), iconSide, iconSide);
    drawIcon(painter, Icon::AddPage, icon, theme::accent);
    room.setTop(room.top() + iconSide + spacing);
    drawLine(painter, room, titleFont(), theme::text, accessibleName());
    drawLine(painter, room, detailFont(), theme::secondaryText, accessibleDescription());
}

void DropZone::setTargeted(bool targeted)
{
    if (targeted == m_targeted)
        return;
    m_targeted = targeted;
    update();
}

void DropZone::dragEnterEvent(QDragEnterEvent* event)
{
    if (droppedFiles(event->mimeData()).isEmpty())
        return;
    acceptCopy(*event);
    setTargeted(true);
}

void DropZone::dragLeaveEvent(QDragLeaveEvent*)
{
    setTargeted(false);
}

void DropZone::dropEvent(QDropEvent* event)
{
    setTargeted(false);
    acceptCopy(*event);
    emit filesDropped(droppedFiles(event->mimeData()));
}

} // namespace folvane
