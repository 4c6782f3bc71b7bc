#include "controls/dragging/DropZone.h"

#include "controls/appearance.h"
#include "controls/dragging/FileDrops.h"
#include "controls/dragging/dropZoneLook.h"
#include "controls/style/Theme.h"
#include "controls/style/icons.h"

#include <QPainter>

namespace folvane {

namespace {

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

DropZone::DropZone(QWidget* parent)
    : PaintedButton(tr("Drop PDFs or images here"), Qt::StrongFocus, parent), m_drops(new FileDrops(*this))
{
    setCursor(Qt::PointingHandCursor);
    setAccessibleDescription(tr("or click to open. Images become pages of a new PDF."));
    connect(m_drops, &FileDrops::underDragChanged, this, qOverload<>(&QWidget::update));
    connect(m_drops, &FileDrops::dropped, this, &DropZone::filesDropped);
}

QSize DropZone::sizeHint() const
{
    return {600, contentHeight() + 2 * padding};
}

QSize DropZone::minimumSizeHint() const
{
    return {200, sizeHint().height()};
}

void DropZone::drawGround(QPainter& painter, const ControlState& state) const
{
    const QPainterPath shape = dropZoneShape(rect());
    const bool targeted = m_drops->isUnderDrag();
    fillDropZone(painter, shape, targeted);
    if (!targeted)
        state.wash(painter, shape, theme::hoverSoft, theme::accentSoft);
    const QColor line = targeted ? theme::accent : state.hasFocus ? theme::focus : theme::hairline;
    outlineDropZone(painter, shape, line);
}

void DropZone::draw(QPainter& painter, const ControlState& state) const
{
    drawGround(painter, state);
    QRect room = rect().adjusted(16, 0, -16, 0);
    room.setTop((height() - contentHeight()) / 2);
    const QRectF icon(QRectF(room).center().x() - iconSide / 2.0, room.top(), iconSide, iconSide);
    drawIcon(painter, Icon::AddPage, icon, theme::accent);
    room.setTop(room.top() + iconSide + spacing);
    drawLine(painter, room, titleFont(), theme::text, text());
    drawLine(painter, room, detailFont(), theme::secondaryText, accessibleDescription());
}

} // namespace folvane
