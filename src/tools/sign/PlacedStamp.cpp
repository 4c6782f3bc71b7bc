#include "tools/sign/PlacedStamp.h"

#include "tools/sign/placedStampAccessibility.h"
#include "tools/sign/stampDrags.h"

#include <QPainter>

#include <cmath>

namespace folvane {

namespace {

constexpr double beyondThePage = 0.25; // opacity of what will be cut off there

StampPlacement dragged(StampFrame::Part part, const StampPlacement& start, QSizeF page, QPointF from,
                       QPointF to)
{
    if (from == to)
        return start; // also where arithmetic would not quite come back
    switch (part) {
    case StampFrame::Part::Picture: return movedStamp(start, page, from, to);
    case StampFrame::Part::ResizeHandle: return resizedStamp(start, page, from, to);
    case StampFrame::Part::TurnHandle: return turnedStamp(start, page, from, to);
    case StampFrame::Part::None: return start;
    }
    Q_UNREACHABLE();
}

int percent(double part)
{
    return qRound(part * 100);
}

} // namespace

PlacedStamp::PlacedStamp(QWidget* parent) : QWidget(parent)
{
    installPlacedStampAccessibility();
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::TabFocus);
}

void PlacedStamp::setStamp(const StampPicture& stamp, const QRectF& page, const QString& name)
{
    if (stamp.placement.id != m_stamp.placement.id)
        endDrag(); // that was about another one
    m_stamp = stamp;
    m_page = page;
    if (!isDragged())
        m_turnSide = turnSide();
    constexpr int air = 1; // for edges that are drawn soft
    setGeometry(frame().bounds().translated(page.topLeft()).toAlignedRect().adjusted(-air, -air, air, air));
    setVisible(hasPicture());
    describe(name);
    update();
}

// Screen readers hear of it as soon as it has moved.
void PlacedStamp::describe(const QString& name)
{
    const StampPlacement& at = m_stamp.placement;
    setAccessibleName(name);
    setAccessibleDescription(
        tr("%1 % from the left, %2 % from the top, %3 % of the page's width, turned by %4°")
            .arg(percent(at.center.x()))
            .arg(percent(at.center.y()))
            .arg(percent(at.width))
            .arg(qRound(at.rotation)));
}

void PlacedStamp::setSelected(bool selected)
{
    if (selected == m_isSelected)
        return;
    m_isSelected = selected;
    update();
}

StampFrame PlacedStamp::frame() const
{
    return StampFrame(stampBox(m_stamp.placement, m_page.size(), m_stamp.size), m_turnSide);
}

// Above, unless it could be reached only below.
StampFrame::TurnSide PlacedStamp::turnSide() const
{
    using Side = StampFrame::TurnSide;
    const auto isInSight = [this](Side side) {
        const StampFrame frame(stampBox(m_stamp.placement, m_page.size(), m_stamp.size), side);
        return QRectF(parentWidget()->rect()).contains(m_page.topLeft() + frame.turnHandle());
    };
    return !isInSight(Side::Above) && isInSight(Side::Below) ? Side::Below : Side::Above;
}

void PlacedStamp::beginDrag(StampFrame::Part part, QPointF at)
{
    m_drag = Drag{part, m_stamp.placement, at};
    emit selected();
}

void PlacedStamp::dragTo(QPointF point)
{
    const StampPlacement now = dragged(m_drag->part, m_drag->start, m_page.size(), m_drag->from, point);
    if (now != m_stamp.placement)
        emit changed(now);
}

void PlacedStamp::focusInEvent(QFocusEvent*)
{
    emit selected();
}

void PlacedStamp::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRectF page = m_page.translated(-pos());
    if (m_isSelected) {
        painter.setOpacity(beyondThePage);
        painter.setClipRegion(QRegion(rect()) - page.toRect());
        drawStamp(painter, page, m_stamp);
        painter.setOpacity(1);
    }
    painter.setClipRect(page);
    drawStamp(painter, page, m_stamp);
}

} // namespace folvane
