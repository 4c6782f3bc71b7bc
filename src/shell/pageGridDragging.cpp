// Drag and drop on the page grid.

#include "shell/PageGrid.h"

#include "controls/droppedFiles.h"
#include "platform/spawn.h"
#include "shell/dragPicture.h"

#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QPointer>

namespace folvane {

namespace {

// As the model reads it when the page is let go.
bool isPageID(const QString& text)
{
    const QUuid id(text);
    return !id.isNull() && id.toString(QUuid::WithoutBraces).compare(text, Qt::CaseInsensitive) == 0;
}

} // namespace

void PageGrid::dragPage(const QUuid& page)
{
    const int row = m_pages.rowOf(page);
    if (row < 0)
        return;
    auto* data = new QMimeData;
    data->setText(page.toString(QUuid::WithoutBraces));
    auto* drag = new QDrag(this);
    drag->setMimeData(data);
    const QPixmap picture = dragPicture(cellAt(row), int(groupOf(page).size()), devicePixelRatioF());
    drag->setPixmap(picture);
    drag->setHotSpot(QPoint(qRound(picture.deviceIndependentSize().width() / 2), 40));
    const QPointer<PageGrid> self(this); // the drag runs its own event loop, and much can happen in it
    drag->exec(Qt::MoveAction | Qt::CopyAction, Qt::MoveAction);
    if (self)
        self->endDrag();
}

void PageGrid::setDropRow(std::optional<int> row)
{
    if (row == m_dropRow)
        return;
    m_dropRow = row;
    viewport()->update();
}

void PageGrid::setFilesOver(bool over)
{
    if (over == m_filesOver)
        return;
    m_filesOver = over;
    viewport()->update();
}

void PageGrid::endDrag()
{
    setFilesOver(false);
    m_draggedTo.reset();
    refreshDropRow();
}

void PageGrid::dragEnterEvent(QDragEnterEvent* event)
{
    dragMoveEvent(event);
}

void PageGrid::dragMoveEvent(QDragMoveEvent* event)
{
    QAbstractItemView::dragMoveEvent(event); // scrolls near the edges
    const bool files = !droppedFiles(event->mimeData()).isEmpty();
    const bool page = !files && isPageID(event->mimeData()->text());
    setFilesOver(files);
    m_draggedTo = page ? std::optional(event->position().toPoint()) : std::nullopt;
    refreshDropRow();
    event->setAccepted(files || page);
    if (files)
        acceptCopy(*event);
    else if (page)
        event->setDropAction(Qt::MoveAction);
}

// Also when the pages scroll below a drag that keeps still.
void PageGrid::refreshDropRow()
{
    setDropRow(m_draggedTo ? std::optional(pageLayout().dropTarget(toContent(*m_draggedTo))) : std::nullopt);
}

void PageGrid::dragLeaveEvent(QDragLeaveEvent* event)
{
    QAbstractItemView::dragLeaveEvent(event);
    endDrag();
}

void PageGrid::dropEvent(QDropEvent* event)
{
    stopAutoScroll();
    setState(NoState);
    endDrag();
    if (!m_file)
        return;
    if (const QList<QUrl> files = droppedFiles(event->mimeData()); !files.isEmpty()) {
        acceptCopy(*event);
        spawn(m_model.insertPages(m_file, files));
        return;
    }
    const int row = pageLayout().dropTarget(toContent(event->position().toPoint()));
    if (m_model.dropPages(m_file, {event->mimeData()->text()}, pageAt(row)))
        event->acceptProposedAction();
}

} // namespace folvane
