#include "tools/stamps/StampGrid.h"

#include "controls/AdaptiveGrid.h"

#include <QKeyEvent>

#include <algorithm>

namespace folvane {

StampGrid::StampGrid(AppModel& model, const AdaptiveColumns& columns, MakeCell makeCell, QWidget* parent)
    : QFrame(parent), m_model(model), m_makeCell(std::move(makeCell)), m_grid(new AdaptiveGrid(columns, this))
{
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
}

void StampGrid::add(const QUuid& stamp)
{
    QWidget* cell = m_makeCell(stamp);
    cell->setParent(this);
    cell->installEventFilter(this);
    m_grid->addWidget(cell);
    if (!m_cells.isEmpty())
        setTabOrder(m_cells.last(), cell);
    m_stamps.append(stamp);
    m_cells.append(cell);
}

// It may be in the middle of an event, so it dies later.
void StampGrid::removeAt(qsizetype index)
{
    QWidget* cell = m_cells.takeAt(index);
    m_stamps.removeAt(index);
    const QWidget* withKeyboard = window()->focusWidget();
    const bool hadKeyboard = cell == withKeyboard || cell->isAncestorOf(withKeyboard);
    if (hadKeyboard && !m_cells.isEmpty())
        m_cells[std::min(index, m_cells.size() - 1)]->setFocus();
    m_grid->removeWidget(cell);
    cell->hide();
    cell->deleteLater();
}

bool StampGrid::eventFilter(QObject* cell, QEvent* event)
{
    const qsizetype index = m_cells.indexOf(cell);
    if (index >= 0 && event->type() == QEvent::FocusIn)
        emit reached(m_cells[index]);
    if (index >= 0 && event->type() == QEvent::KeyPress)
        return goFrom(index, Qt::Key(static_cast<QKeyEvent*>(event)->key()));
    return QFrame::eventFilter(cell, event);
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
