#include "controls/DropZone.h"

#include "controls/Theme.h"
#include "controls/appearance.h"
#include "controls/droppedFiles.h"
#include "controls/icons.h"

#include <QDropEvent>
#include <QMimeData>
#include <QPainter>

namespace folvane {

namespace {

void drawLine(QPainter& painter, QRect& room, const QFont& font, const QColor& color, const QString& text)
{
    painter.setFont(font);
    painter.setPen(color);
    const int height = QFontMetrics(font).height();
    painter.drawText(QRect(room.left(), room.top(), room.width(), height), Qt::AlignCenter, text);
    room.setTop(room.top() + height + 10);
}

} // namespace

DropZone::DropZone(QWidget* parent) : QAbstractButton(parent)
{
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setMinimumHeight(200);
    setAccessibleName(tr("Drop PDFs or images here"));
    setAccessibleDescription(tr("or click to open. Images become pages of a new PDF."));
}

void DropZone::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(1, 1, -1, -1);
    painter.setPen(QPen(m_targeted || showsFocus(*this) ? theme::accent : theme::hairline, 2));
    painter.setBrush(theme::surface);
    painter.drawRoundedRect(frame, 20, 20);
    if (m_targeted || isDown()) {
        painter.setBrush(theme::accentSoft);
        painter.drawRoundedRect(frame, 20, 20);
    }

    QRect room = rect().adjusted(16, 0, -16, 0);
    room.setTop(rect().center().y() - 60);
    drawIcon(painter, Icon::Document, QRectF(room.center().x() - 22, room.top(), 44, 44), theme::accent);
    room.setTop(room.top() + 58);
    drawLine(painter, room, interfaceFont(18, Weight::SemiBold), theme::text, accessibleName());
    drawLine(painter, room, interfaceFont(13), theme::secondaryText, accessibleDescription());
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
    event->acceptProposedAction();
    setTargeted(true);
}

void DropZone::dragLeaveEvent(QDragLeaveEvent*)
{
    setTargeted(false);
}

void DropZone::dropEvent(QDropEvent* event)
{
    setTargeted(false);
    event->acceptProposedAction();
    emit filesDropped(droppedFiles(event->mimeData()));
}

} // namespace folvane
