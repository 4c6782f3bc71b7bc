// Drag and drop on the page grid.

#include "shell/pageGrid/PageGrid.h"

#include "controls/dragging/droppedFiles.h"
#include "controls/paletteColors.h"
#include "controls/style/Theme.h"
#include "documents/pages/pageLists.h"
#include "platform/tasks/spawn.h"
#include "shell/pageGrid/dragPicture.h"

#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QPointer>

namespace folvane {

void PageGrid::dragPage(const QUuid& page)
{
    const int row = m_pages.rowOf(page);
    if (row < 0)
        return;
    auto* data = new QMimeData;
    data->setText(page.toString(QUuid::WithoutBraces));
    auto* drag = new QDrag(this);
    drag->setMimeData(data);
    const QPixmap picture = dragPicture(cellAt(row), int(m_file->groupOf(page).size()), devicePixelRatioF());
    drag->setPixmap(picture);
    drag->setHotSpot(QPoint(qRound(picture.deviceIndependentSize().width() / 2), 40));
    const QPointer<PageGrid> self(this); // the drag runs its own event loop, and much can happen in it
    scroller().begin();
    drag->exec(Qt::MoveAction | Qt::CopyAction, Qt::MoveAction);
    if (!self)
        return;
    scroller().end();
    endDrag();
}

void PageGrid::dragOver(bool files, const QUuid& page, const QPoint& place)
{
    m_draggedTo = place;
    setFilesOver(files);
    m_lifted = files ? QSet<QUuid>() : m_file->groupOf(page);
    scroller().follow(place);
    viewport()->update();
}

void PageGrid::setFilesOver(bool over)
{
    m_filesOver = over;
    setGround(*this, over ? theme::accentSoft : theme::background); // also below the scroll bar
}

void PageGrid::endDrag()
{
    m_draggedTo.reset();
    setFilesOver(false);
    m_lifted.clear();
    scroller().leave();
    viewport()->update();
}

// Pages land where they are let go. Files go behind the selected pages, wherever that is.
std::optional<PageGrid::DropMark> PageGrid::dropMark() const
{
    if (!m_draggedTo || !m_file || m_pages.rowCount() == 0)
        return std::nullopt;
    if (m_filesOver)
        return DropMark{int(insertionIndex(m_pages.pages(), m_file->selection.value())) - 1, true};
    const int target = pageLayout().dropTarget(toContent(*m_draggedTo));
    const bool atEnd = target >= m_pages.rowCount();
    return DropMark{atEnd ? target - 1 : target, atEnd};
}

void PageGrid::dragEnterEvent(QDragEnterEvent* event)
{
    dragMoveEvent(event);
}

void PageGrid::dragMoveEvent(QDragMoveEvent* event)
{
    const bool files = !droppedFiles(event->mimeData()).isEmpty();
    const QString text = event->mimeData()->text();
    const bool page = !files && pageID(text);
    event->setAccepted(m_file && (files || page));
    if (!event->isAccepted()) {
        endDrag();
        return;
    }
    dragOver(files, QUuid(text), event->position().toPoint());
    if (files)
        acceptCopy(*event);
    else
        event->setDropAction(Qt::MoveAction);
}

void PageGrid::dragLeaveEvent(QDragLeaveEvent*)
{
    endDrag();
}

void PageGrid::dropEvent(QDropEvent* event)
{
    const int row = pageLayout().dropTarget(toContent(event->position().toPoint()));
    endDrag();
    if (!m_file)
        return;
    if (const QList<QUrl> files = droppedFiles(event->mimeData()); !files.isEmpty()) {
        acceptCopy(*event);
        spawn(m_model.insertPages(m_file, files));
        return;
    }
    if (m_model.dropPages(m_file, {event->mimeData()->text()}, pageAt(row)))
        event->acceptProposedAction();
}

} // namespace folvane
