// Mouse, keyboard, and drag and drop of the page grid.

#include "shell/PageGrid.h"

#include "controls/droppedFiles.h"
#include "platform/spawn.h"
#include "shell/pageCell.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QPainter>
#include <QPointer>

#include <algorithm>

namespace folvane {

namespace {

constexpr int previewWidth = 120;

QPixmap dragPreview(const QPixmap& picture, double scale)
{
    const QSize size = picture.size().scaled(previewWidth, previewWidth * 3 / 2, Qt::KeepAspectRatio);
    QPixmap preview = picture.scaled(size * scale, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    preview.setDevicePixelRatio(scale);
    return preview;
}

} // namespace

std::optional<QUuid> PageGrid::pageAt(int row) const
{
    if (row < 0 || row >= m_pages.rowCount())
        return std::nullopt;
    return m_pages.pages()[size_t(row)].id;
}

void PageGrid::click(const QUuid& page, Qt::KeyboardModifiers modifiers)
{
    const PageSelection before{m_file->selection.value(), m_anchor};
    const PageSelection after = selectionAfterClick(before, m_pages.ids(), page, modifiers);
    m_anchor = after.anchor;
    m_file->selection = after.pages;
}

// A click selects when the button comes up: until then it may become a drag, which leaves the selection as it is.
void PageGrid::mousePressEvent(QMouseEvent* event)
{
    m_byKeyboard = false;
    m_pressedAt = event->position().toPoint();
    m_pressed = event->button() == Qt::LeftButton ? pageAt(indexAt(m_pressedAt).row()) : std::nullopt;
}

void PageGrid::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint way = event->position().toPoint() - m_pressedAt;
    if (!m_pressed || !(event->buttons() & Qt::LeftButton)
        || way.manhattanLength() < QApplication::startDragDistance())
        return;
    dragPage(*std::exchange(m_pressed, std::nullopt));
}

void PageGrid::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_file)
        return;
    const QModelIndex under = indexAt(event->position().toPoint());
    const std::optional<QUuid> pressed = std::exchange(m_pressed, std::nullopt);
    if (pressed && pressed == pageAt(under.row())) {
        selectionModel()->setCurrentIndex(under, QItemSelectionModel::NoUpdate);
        click(*pressed, event->modifiers());
    } else if (!under.isValid() && !indexAt(m_pressedAt).isValid()) {
        m_file->selection = QSet<QUuid>();
    }
}

void PageGrid::mouseDoubleClickEvent(QMouseEvent*)
{
    m_pressed.reset(); // its first click has selected the page
}

void PageGrid::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex index = byKey ? currentIndex() : indexAt(event->pos());
    if (const std::optional<QUuid> page = pageAt(index.row()))
        emit pageMenuRequested(*page, byKey ? viewport()->mapToGlobal(visualRect(index).center())
                                            : event->globalPos());
}

void PageGrid::focusInEvent(QFocusEvent* event)
{
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        m_byKeyboard = true;
    if (!currentIndex().isValid() && m_pages.rowCount() > 0)
        selectionModel()->setCurrentIndex(m_pages.index(0), QItemSelectionModel::NoUpdate);
    viewport()->update();
}

void PageGrid::keyPressEvent(QKeyEvent* event)
{
    if (!m_file || (!commandByKey(event) && !moveByKey(event)))
        event->ignore();
}

bool PageGrid::commandByKey(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Delete) || event->key() == Qt::Key_Backspace) {
        m_model.deletePages(m_file, m_file->selection.value());
    } else if (event->matches(QKeySequence::SelectAll)) {
        const QList<QUuid> all = m_pages.ids();
        m_file->selection = QSet<QUuid>(all.begin(), all.end());
    } else if (event->key() == Qt::Key_Escape) {
        m_file->selection = QSet<QUuid>();
    } else if (event->key() == Qt::Key_Space && currentIndex().isValid()) {
        click(*pageAt(currentIndex().row()), Qt::ControlModifier);
    } else {
        return false;
    }
    return true;
}

bool PageGrid::moveByKey(QKeyEvent* event)
{
    const int row = currentIndex().row();
    const int columns = pageLayout().columns();
    const int screen =
        std::max(1, viewport()->height() / std::max(1, pageLayout().cell(0).height())) * columns;
    switch (event->key()) {
    case Qt::Key_Left: goTo(row - 1, event->modifiers()); return true;
    case Qt::Key_Right: goTo(row + 1, event->modifiers()); return true;
    case Qt::Key_Up: goTo(row < columns ? row : row - columns, event->modifiers()); return true;
    case Qt::Key_Down: goTo(row + columns, event->modifiers()); return true;
    case Qt::Key_PageUp: goTo(row - screen, event->modifiers()); return true;
    case Qt::Key_PageDown: goTo(row + screen, event->modifiers()); return true;
    case Qt::Key_Home: goTo(0, event->modifiers()); return true;
    case Qt::Key_End: goTo(m_pages.rowCount() - 1, event->modifiers()); return true;
    default: return false;
    }
}

// Plain keys select the page they reach, Shift selects all the way to it, Ctrl only moves.
void PageGrid::goTo(int row, Qt::KeyboardModifiers modifiers)
{
    m_byKeyboard = true;
    const QModelIndex index = m_pages.index(std::clamp(row, 0, std::max(0, m_pages.rowCount() - 1)));
    if (!index.isValid())
        return;
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    scrollTo(index);
    if (!(modifiers & Qt::ControlModifier))
        click(*pageAt(index.row()), modifiers & Qt::ShiftModifier);
    viewport()->update();
}

// Drag and drop

void PageGrid::dragPage(const QUuid& page)
{
    const int row = m_pages.rowOf(page);
    if (row < 0)
        return;
    auto* data = new QMimeData;
    data->setText(page.toString(QUuid::WithoutBraces));
    auto* drag = new QDrag(this);
    drag->setMimeData(data);
    if (const QPixmap* picture = m_pictures.picture(key(m_pages.pages()[size_t(row)])))
        drag->setPixmap(dragPreview(*picture, devicePixelRatioF()));
    const QPointer<PageGrid> self(this); // the drag runs its own event loop, and much can happen in it
    drag->exec(Qt::MoveAction | Qt::CopyAction, Qt::MoveAction);
    if (self)
        self->setDropRow(std::nullopt);
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

void PageGrid::dragEnterEvent(QDragEnterEvent* event)
{
    dragMoveEvent(event);
}

void PageGrid::dragMoveEvent(QDragMoveEvent* event)
{
    QAbstractItemView::dragMoveEvent(event); // scrolls near the edges
    const bool files = !droppedFiles(event->mimeData()).isEmpty();
    const bool page = !files && !QUuid(event->mimeData()->text()).isNull();
    setFilesOver(files);
    setDropRow(page ? std::optional(pageLayout().dropTarget(toContent(event->position().toPoint())))
                    : std::nullopt);
    event->setAccepted(files || page);
    if (files)
        event->setDropAction(Qt::CopyAction);
    else if (page)
        event->setDropAction(Qt::MoveAction);
}

void PageGrid::dragLeaveEvent(QDragLeaveEvent* event)
{
    QAbstractItemView::dragLeaveEvent(event);
    setFilesOver(false);
    setDropRow(std::nullopt);
}

void PageGrid::dropEvent(QDropEvent* event)
{
    stopAutoScroll();
    setState(NoState);
    setFilesOver(false);
    setDropRow(std::nullopt);
    if (!m_file)
        return;
    if (const QList<QUrl> files = droppedFiles(event->mimeData()); !files.isEmpty()) {
        event->acceptProposedAction();
        spawn(m_model.insertPages(m_file, files));
        return;
    }
    const int row = pageLayout().dropTarget(toContent(event->position().toPoint()));
    if (m_model.dropPages(m_file, {event->mimeData()->text()}, pageAt(row)))
        event->acceptProposedAction();
}

} // namespace folvane
