#include "controls/containers/LazyColumn.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>
#include <utility>

// How the keyboard goes through the column, and the column goes along.

namespace folvane {

namespace {

constexpr int air = 16; // around what comes on screen because it got the keyboard

/// What can have the keyboard in the widget, itself included, in the order of the Tab key.
QList<QWidget*> stopsIn(QWidget& widget)
{
    QList<QWidget*> stops = widget.findChildren<QWidget*>();
    stops.prepend(&widget);
    stops.removeIf([](const QWidget* each) { return each->focusPolicy() == Qt::NoFocus; });
    return stops;
}

void giveKeyboard(QWidget& widget)
{
    const QList<QWidget*> stops = stopsIn(widget);
    const auto stop =
        std::ranges::find_if(stops, [](const QWidget* each) { return each->focusPolicy() & Qt::TabFocus; });
    if (stop != stops.end())
        (*stop)->setFocus(Qt::TabFocusReason);
}

} // namespace

void LazyColumn::chainTabs()
{
    QList<QUuid> made = m_items;
    made.removeIf([this](const QUuid& item) { return !m_made.contains(item); });
    if (std::exchange(m_chained, made) == made)
        return;
    QList<QWidget*> stops = stopsIn(*m_header);
    for (const QUuid& item : made)
        stops += stopsIn(*m_made[item]);
    for (qsizetype i = 1; i < stops.size(); ++i)
        QWidget::setTabOrder(stops[i - 1], stops[i]);
}

/// To the item that has come to this place, or to the last one; to the header when none is left.
void LazyColumn::passKeyboardOn(qsizetype from)
{
    if (m_items.isEmpty())
        giveKeyboard(*m_header);
    else
        goTo(std::min(from, m_items.size() - 1));
}

// A press of the mouse that gives the keyboard leaves everything where it is.
void LazyColumn::follow(QWidget* focused)
{
    const bool isHere = focused && viewport()->isAncestorOf(focused);
    if (!isHere || m_isArranging || QApplication::mouseButtons() != Qt::NoButton)
        return;
    const int top = focused->mapTo(viewport(), QPoint()).y() + scroll();
    reveal(top, top + focused->height());
}

void LazyColumn::reveal(int top, int bottom)
{
    const int lowest = top - air;
    const int highest = bottom + air - viewport()->height();
    if (scroll() > lowest || highest > lowest)
        verticalScrollBar()->setValue(lowest);
    else if (scroll() < highest)
        verticalScrollBar()->setValue(highest);
}

/// -1 when none has the keyboard.
qsizetype LazyColumn::focusedItem() const
{
    const QWidget* focused = window()->focusWidget();
    for (const auto& [item, widget] : m_made.asKeyValueRange())
        if (focused && (widget == focused || widget->isAncestorOf(focused)))
            return m_items.indexOf(item);
    return -1;
}

void LazyColumn::goTo(qsizetype item)
{
    if (item < 0 || item >= m_items.size())
        return;
    if (!m_made.contains(m_items[item]))
        arrange({m_items[item], air}); // by thought heights it may lie elsewhere
    reveal(topOf(item), bottomOf(item));
    if (QWidget* widget = m_made.value(m_items[item]))
        giveKeyboard(*widget);
}

void LazyColumn::goDown(qsizetype from)
{
    if (from >= 0 && bottomOf(from) > scroll() + viewport()->height())
        verticalScrollBar()->setValue(scroll() + verticalScrollBar()->singleStep());
    else
        goTo(from + 1);
}

void LazyColumn::goUp(qsizetype from)
{
    if (from <= 0 || topOf(from) < scroll())
        verticalScrollBar()->setValue(scroll() - verticalScrollBar()->singleStep());
    else
        goTo(from - 1);
}

/// To the item that is a page further; in one that is higher than the screen, a page of it.
void LazyColumn::turnPage(int direction)
{
    const int page = viewport()->height() - verticalScrollBar()->singleStep();
    const int place = std::max(scroll() + direction * page, 0);
    const qsizetype item = std::min(itemAt(place), m_items.size() - 1);
    const bool isThere = item < 0 || item == focusedItem();
    if (isThere || bottomOf(item) - topOf(item) > page)
        verticalScrollBar()->setValue(place);
    else
        goTo(item);
}

void LazyColumn::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Down: return goDown(focusedItem());
    case Qt::Key_Up: return goUp(focusedItem());
    case Qt::Key_Home: return goTo(0);
    case Qt::Key_End: return goTo(m_items.size() - 1);
    case Qt::Key_PageDown: return turnPage(1);
    case Qt::Key_PageUp: return turnPage(-1);
    default: QAbstractScrollArea::keyPressEvent(event);
    }
}

} // namespace folvane
