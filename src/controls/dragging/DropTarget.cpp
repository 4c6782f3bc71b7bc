#include "controls/dragging/DropTarget.h"

#include "controls/dragging/droppedFiles.h"

#include <QDropEvent>
#include <QWidget>

namespace folvane {

DropTarget::DropTarget(QWidget& target) : QObject(&target)
{
    target.setAcceptDrops(true);
    target.installEventFilter(this);
}

bool DropTarget::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter: return enter(*static_cast<QDropEvent*>(event));
    case QEvent::DragMove: return move(*static_cast<QDropEvent*>(event));
    case QEvent::DragLeave: setUnderDrag(false); return true;
    case QEvent::Drop: return drop(*static_cast<QDropEvent*>(event));
    default: return false;
    }
}

// A drag that is not accepted here goes on to what lies around, so that what is refused is accepted first and refused when it moves.
bool DropTarget::enter(QDropEvent& event)
{
    const Verdict verdict = judge(*event.mimeData());
    if (verdict == Verdict::Leave)
        return false;
    acceptCopy(event);
    setUnderDrag(verdict == Verdict::Take);
    return true;
}

bool DropTarget::move(QDropEvent& event) const
{
    if (!m_isUnderDrag)
        event.ignore();
    return !m_isUnderDrag;
}

bool DropTarget::drop(QDropEvent& event)
{
    if (!m_isUnderDrag)
        return move(event);
    setUnderDrag(false);
    acceptCopy(event);
    take(*event.mimeData());
    return true;
}

void DropTarget::setUnderDrag(bool under)
{
    if (under == m_isUnderDrag)
        return;
    m_isUnderDrag = under;
    emit underDragChanged();
}

} // namespace folvane
