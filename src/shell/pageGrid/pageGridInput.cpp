// Mouse and keyboard of the page grid.

#include "shell/pageGrid/PageGrid.h"

#include "shell/pageGrid/pageMoves.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

namespace folvane {

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

/// What a drag from this page carries.
QSet<QUuid> PageGrid::groupOf(const QUuid& page) const
{
    const QSet<QUuid> selected = m_file->selection.value();
    return selected.contains(page) ? selected : QSet<QUuid>{page};
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
        selectionModel()->setCurrentIndex(m_pages.index(0), QItemSelectionModel::NoUpdate);
    viewport()->update();
}

void PageGrid::keyPressEvent(QKeyEvent* event)
{
    if (!m_file || (!commandByKey(event) && !movePagesByKey(event) && !walkByKey(event)))
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

// Alt carries the selected pages along.
bool PageGrid::movePagesByKey(QKeyEvent* event)
{
    if (!(event->modifiers() & Qt::AltModifier))
        return false;
    switch (event->key()) {
    case Qt::Key_Left: movePages(-1); return true;
    case Qt::Key_Right: movePages(1); return true;
    case Qt::Key_Up: movePages(-pageLayout().columns()); return true;
    case Qt::Key_Down: movePages(pageLayout().columns()); return true;
    case Qt::Key_Home: movePages(-m_pages.rowCount()); return true;
    case Qt::Key_End: movePages(m_pages.rowCount()); return true;
    default: return false;
    }
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

} // namespace folvane
