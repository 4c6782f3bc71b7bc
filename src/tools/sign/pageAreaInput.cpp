// Mouse and keyboard of the page with its stamps.

#include "tools/sign/PageArea.h"

#include "tools/sign/PlacedStamp.h"
#include "tools/sign/stampKeys.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineF>
#include <QMouseEvent>
#include <QToolTip>

#include <algorithm>
#include <array>
#include <ranges>

namespace folvane {

namespace {

/// The arrows that lie nearest to the way from the centre to the handle.
Qt::CursorShape resizeCursor(QPointF way)
{
    constexpr std::array shapes{Qt::SizeHorCursor, Qt::SizeBDiagCursor, Qt::SizeVerCursor,
                                Qt::SizeFDiagCursor};
    return shapes[size_t(qRound(QLineF({}, way).angle() / 45)) % shapes.size()];
}

} // namespace

// The handles of the selected stamp lie over all stamps.
PageArea::Spot PageArea::spotAt(QPointF point) const
{
    const QPointF at = onPage(point);
    if (PlacedStamp* stamp = selectedStamp(); stamp && stamp->hasPicture()) {
        const StampFrame::Part part = stamp->frame().partAt(at, true);
        if (part != StampFrame::Part::None && part != StampFrame::Part::Picture)
            return {stamp, part};
    }
    for (PlacedStamp* stamp : m_stamps | std::views::reverse) {
        const bool isHit =
            stamp->hasPicture() && stamp->frame().partAt(at, stamp->isSelected()) != StampFrame::Part::None;
        if (isHit)
            return {stamp, StampFrame::Part::Picture};
    }
    return {};
}

void PageArea::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const Spot spot = spotAt(event->position());
    if (!spot.stamp) {
        emit selected(std::nullopt);
        return setFocus();
    }
    spot.stamp->setFocus(Qt::MouseFocusReason);
    spot.stamp->beginDrag(spot.part, onPage(event->position()));
    showCursor(spot);
}

void PageArea::mouseMoveEvent(QMouseEvent* event)
{
    const auto dragged = std::ranges::find_if(m_stamps, &PlacedStamp::isDragged);
    if (dragged != m_stamps.end())
        (*dragged)->dragTo(onPage(event->position()));
    else
        showCursor(spotAt(event->position()));
}

void PageArea::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    for (PlacedStamp* stamp : m_stamps)
        stamp->endDrag();
    showCursor(spotAt(event->position()));
}

void PageArea::showCursor(const Spot& spot)
{
    switch (spot.part) {
    case StampFrame::Part::None: return unsetCursor();
    case StampFrame::Part::Picture:
        return setCursor(spot.stamp->isDragged() ? Qt::ClosedHandCursor : Qt::OpenHandCursor);
    case StampFrame::Part::TurnHandle: return setCursor(Qt::PointingHandCursor);
    case StampFrame::Part::ResizeHandle:
        return setCursor(resizeCursor(spot.stamp->frame().fromCenterToCorner()));
    }
}

bool PageArea::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const StampFrame::Part part = spotAt(help->pos()).part;
    QToolTip::showText(help->globalPos(),
                       part == StampFrame::Part::TurnHandle     ? tr("Drag to turn")
                       : part == StampFrame::Part::ResizeHandle ? tr("Drag to resize")
                                                                : QString(),
                       this);
    return true;
}

// The stamps that have the keyboard leave their keys to the page.
void PageArea::keyPressEvent(QKeyEvent* event)
{
    const PlacedStamp* stamp = selectedStamp();
    const std::optional<StampPlacement> after =
        stamp ? stampAfterKey(stamp->placement(), pageRect().size(), *event) : std::nullopt;
    if (after)
        emit changed(*after);
    else if (event->matches(QKeySequence::Delete) || event->key() == Qt::Key_Backspace)
        emit removeRequested();
    else if (event->key() == Qt::Key_Escape)
        emit selected(std::nullopt);
    else if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown)
        emit stepRequested(event->key() == Qt::Key_PageUp ? -1 : 1);
    else
        event->ignore();
}

} // namespace folvane
