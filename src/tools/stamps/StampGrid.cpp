#include "tools/stamps/StampGrid.h"

#include "controls/accessibility.h"
#include "controls/containers/AdaptiveGrid.h"

#include <QKeyEvent>

#include <algorithm>

namespace folvane {

StampGrid::StampGrid(AppModel& model, const AdaptiveColumns& columns, MakeCell makeCell, QWidget* parent)
    : QFrame(parent), m_model(model), m_makeCell(std::move(makeCell)), m_grid(new AdaptiveGrid(columns, this))
{
    setSpokenRole(*this, QAccessible::List);
    setAccessibleName(tr("Signatures & Stamps"));
    m_watches.keep([this] { refresh(); }, model.stamps.stamps);
}

// The library adds at its end and takes away anywhere.
void StampGrid::refresh()
{
    QList<QUuid> now;
    for (const StampRecord& record : m_model.stamps.stamps.value())
        now.append(record.id);
    for (qsizetype i = m_stamps.size() - 1; i >= 0; --i) {
        if (!now.contains(m_stamps[i]))
            removeAt(i);
    }
    for (const QUuid& stamp : now) {
        if (!m_stamps.contains(stamp))
            add(stamp);
    }
    showEmptyState();
}

void StampGrid::setEmptyState(QWidget* empty)
{
    m_empty = empty;
    showEmptyState();
}

void StampGrid::showEmptyState()
{
    setVisible(!m_cells.isEmpty());
    if (m_empty)
        m_empty->setVisible(m_cells.isEmpty());
}

void StampGrid::add(const QUuid& stamp)
{
    QWidget* cell = m_makeCell(stamp);
    cell->setParent(this);
    cell->installEventFilter(this);
    m_grid->addWidget(cell);
    m_stamps.append(stamp);
    m_cells.append(cell);
    stopTabAt(m_cells.contains(m_stop) ? m_stop : cell);
}

// It may be in the middle of an event, so it dies later. Whoever gets the keyboard has to be in its place by then, as views scroll there.
void StampGrid::removeAt(qsizetype index)
{
    QWidget* cell = m_cells.takeAt(index);
    m_stamps.removeAt(index);
    if (cell == m_stop && !m_cells.isEmpty())
        stopTabAt(m_cells[std::min(index, m_cells.size() - 1)]);
    m_grid->removeWidget(cell);
    m_grid->activate();
    if (cell == window()->focusWidget() && !takeFocus())
        emit left();
    cell->hide();
    cell->deleteLater();
}

bool StampGrid::eventFilter(QObject* cell, QEvent* event)
{
    const qsizetype index = m_cells.indexOf(cell);
    if (index >= 0 && event->type() == QEvent::FocusIn) {
        stopTabAt(m_cells[index]);
        emit reached(m_cells[index]);
    }
    if (index >= 0 && event->type() == QEvent::KeyPress)
        return goFrom(index, Qt::Key(static_cast<QKeyEvent*>(event)->key()));
    return QFrame::eventFilter(cell, event);
}

void StampGrid::stopTabAt(QWidget* cell)
{
    m_stop = cell;
    for (QWidget* each : m_cells) {
        const int policy = each->focusPolicy();
        each->setFocusPolicy(Qt::FocusPolicy(each == cell ? policy | Qt::TabFocus : policy & ~Qt::TabFocus));
    }
}

bool StampGrid::takeFocus()
{
    if (!m_cells.contains(m_stop))
        return false;
    m_stop->setFocus();
    return true;
}

bool StampGrid::goFrom(qsizetype index, Qt::Key key)
{
    qsizetype to = index;
    switch (key) {
    case Qt::Key_Left: to -= 1; break;
    case Qt::Key_Right: to += 1; break;
    case Qt::Key_Up: to -= m_grid->columns(); break;
    case Qt::Key_Down: to += m_grid->columns(); break;
    case Qt::Key_Home: to = 0; break;
    case Qt::Key_End: to = m_cells.size() - 1; break;
    default: return false;
    }
    if (to >= 0 && to < m_cells.size())
        m_cells[to]->setFocus(Qt::TabFocusReason);
    return true;
}

} // namespace folvane
