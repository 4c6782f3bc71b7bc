// Mouse and keyboard of the page grid.

#include "shell/pageGrid/PageGrid.h"

#include "shell/pageGrid/PageSelectionModel.h"
#include "shell/pageGrid/pageMoves.h"

#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

namespace folvane {

// A click selects when the button comes up: until then it may become a drag, which leaves the selection as it is.
void PageGrid::mousePressEvent(QMouseEvent* event)
{
    m_byKeyboard = false;
    PictureList::mousePressEvent(event);
    m_pressed = event->button() == Qt::LeftButton ? pageAt(indexAt(pressedAt()).row()) : std::nullopt;
}

void PageGrid::mouseMoveEvent(QMouseEvent* event)
{
    if (m_pressed && isPull(*event))
        dragPage(*std::exchange(m_pressed, std::nullopt));
}

void PageGrid::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_file)
        return;
    const QModelIndex under = indexAt(event->position().toPoint());
    const std::optional<QUuid> pressed = std::exchange(m_pressed, std::nullopt);
    if (pressed && pressed == pageAt(under.row())) {
        setCurrentRow(under.row());
        m_selection->click(*pressed, event->modifiers());
    } else if (!under.isValid() && !indexAt(pressedAt()).isValid()) {
        m_file->selection = QSet<QUuid>();
    }
}

void PageGrid::mouseDoubleClickEvent(QMouseEvent* event)
{
    m_pressed.reset(); // its first click has selected the page
    const QModelIndex under = indexAt(event->position().toPoint());
    const std::optional<QUuid> page = event->button() == Qt::LeftButton ? pageAt(under.row()) : std::nullopt;
    if (page)
        emit opened(*page);
}

void PageGrid::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex index = byKey ? currentIndex() : indexAt(event->pos());
    if (byKey)
        scrollTo(index);
    if (const std::optional<QUuid> page = pageAt(index.row()))
        emit pageMenuRequested(*page, byKey ? viewport()->mapToGlobal(visualRect(index).center())
                                            : event->globalPos());
}

void PageGrid::focusInEvent(QFocusEvent* event)
{
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        m_byKeyboard = true;
    if (!currentIndex().isValid() && m_pages.rowCount() > 0)
        setCurrentRow(0);
    viewport()->update();
}

void PageGrid::keyPressEvent(QKeyEvent* event)
{
    if (!m_file || (!commandByKey(event) && !moveByKey(event) && !walkByKey(event)))
        event->ignore();
}

bool PageGrid::commandByKey(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Delete) || event->key() == Qt::Key_Backspace) {
        m_model.deletePages(m_file, m_file->selection.value());
    } else if (event->key() == Qt::Key_Escape) {
        m_file->selection = QSet<QUuid>();
    } else if (event->key() == Qt::Key_Space && currentIndex().isValid()) {
        m_selection->click(*pageAt(currentIndex().row()), Qt::ControlModifier);
    } else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
               && currentIndex().isValid()) {
        emit opened(*pageAt(currentIndex().row()));
    } else {
        return false;
    }
    return true;
}

// Alt carries the selected pages along.
bool PageGrid::moveByKey(QKeyEvent* event)
{
    const bool aside = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
    if (!aside || !(event->modifiers() & Qt::AltModifier))
        return carryByKey(*event);
    movePages(event->key() == Qt::Key_Left ? -1 : 1);
    return true;
}

void PageGrid::movePages(int steps)
{
    const std::optional<QUuid> current = pageAt(currentIndex().row());
    QSet<QUuid> group = m_file->selection.value();
    if (group.isEmpty() && current)
        group = {*current};
    m_model.move(m_file, group, pageAfterMove(m_pages.ids(), group, steps));
    scrollTo(currentIndex());
}

bool PageGrid::walkByKey(QKeyEvent* event)
{
    const int row = currentIndex().row();
    const int across = columns();
    const int screen = std::max(1, viewport()->height() / pageCellMetrics.height()) * across;
    switch (event->key()) {
    case Qt::Key_Left: goTo(row - 1, event->modifiers()); return true;
    case Qt::Key_Right: goTo(row + 1, event->modifiers()); return true;
    case Qt::Key_Up: goTo(row < across ? row : row - across, event->modifiers()); return true;
    case Qt::Key_Down: goTo(row + across, event->modifiers()); return true;
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
    const std::optional<QUuid> page = pageAt(std::clamp(row, 0, std::max(0, m_pages.rowCount() - 1)));
    if (!page)
        return;
    setCurrentRow(m_pages.rowOf(*page));
    scrollTo(currentIndex());
    if (!(modifiers & Qt::ControlModifier))
        m_selection->click(*page, modifiers & Qt::ShiftModifier);
    viewport()->update();
}

} // namespace folvane
