#include "tools/merge/MergeList.h"

#include "controls/style/focusRing.h"

#include <QHelpEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <algorithm>

namespace folvane {

namespace {

/// Only the height of the rows: the list draws them itself.
class RowHeight : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override
    {
        return {200, mergeRowHeight};
    }
};

constexpr int pictureSide = 120; // pixels

} // namespace

MergeList::MergeList(AppModel& model, QWidget* parent)
    : PictureList(model, {pictureSide, largestRowPaper}, parent), m_model(model)
{
    setModel(&m_rows);
    setItemDelegate(new RowHeight(this));
    setAccessibleName(tr("Files to merge"));
    setUniformItemSizes(true);
    setResizeMode(Adjust);
    setSelectionMode(NoSelection);
    setMouseTracking(true);
    verticalScrollBar()->setSingleStep(mergeRowHeight / 2);
    m_watches.keep([this] { showItems(); }, m_model.merge.items);
}

void MergeList::showItems()
{
    const int before = currentIndex().row();
    const QUuid current = before >= 0 ? m_rows.item(before).id : QUuid();
    const int scrolledTo = verticalScrollBar()->value();
    const int rowsBefore = m_rows.rowCount();
    m_rows.setItems(m_model.merge.items.value());
    m_hovered = {};
    m_pressed = {};
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(scrolledTo);
    keepCurrentRow(m_rows.rowOf(current), std::max(before, 0));
    if (m_rows.rowCount() > rowsBefore && rowsBefore > 0)
        QListView::scrollTo(m_rows.index(m_rows.rowCount() - 1)); // what has been added is to be seen
    wantPictures();
}

QList<PagePictures::Key> MergeList::keysOnScreen() const
{
    const QRect near = viewport()->rect().adjusted(0, -mergeRowHeight, 0, mergeRowHeight);
    QList<PagePictures::Key> keys;
    for (int row = 0; row < m_rows.rowCount(); ++row)
        if (rectOf(row).intersects(near)) // a row that makes room for another may come into sight
            keys.append(keyOf(m_rows.item(row).pages.front()));
    return keys;
}

void MergeList::hideEvent(QHideEvent* event)
{
    endDrag(false);
    PictureList::hideEvent(event);
}

MergeRow MergeList::rowAt(int row) const
{
    const MergeItem& item = m_rows.item(row);
    const bool isOverRemove = m_hovered == Spot{row, true} && !m_drag;
    return {
        .number = placeOf(row) + 1,
        .name = item.name,
        .pages = m_rows.pages(row),
        .paper = paperOf(item.pages.front()),
        .hasKeyboard = showsFocus(*this) && currentIndex().row() == row,
        .isUnderPointer = m_hovered.row == row && !m_drag,
        .remove = {.isUnderPointer = isOverRemove, .isPressed = isOverRemove && m_pressed == m_hovered},
    };
}

void MergeList::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    for (int row = 0; row < m_rows.rowCount(); ++row) {
        const bool isLifted = m_drag && m_rows.item(row).id == m_drag->item;
        const QRect rect = rectOf(placeOf(row));
        if (rect.intersects(viewport()->rect()) && !isLifted)
            drawMergeRow(painter, rect, rowAt(row));
    }
    if (m_drag)
        drawDrag(painter);
}

// As wide as the list: a scroll bar stands beside the cards, in their margin, and does not push them out of line.
QRect MergeList::rectOf(int row) const
{
    QRect rect = visualRect(m_rows.index(row));
    rect.setWidth(width());
    return rect;
}

MergeList::Spot MergeList::spotAt(const QPoint& place) const
{
    const int row = indexAt(place).row();
    if (row < 0 || !cardOf(rectOf(row)).contains(place))
        return {};
    return {row, removeButtonOf(rectOf(row)).contains(place)};
}

void MergeList::setHovered(const Spot& spot)
{
    if (spot == m_hovered)
        return;
    m_hovered = spot;
    viewport()->update();
}

QString MergeList::toolTipAt(const QPoint& place) const
{
    const Spot spot = spotAt(place);
    if (spot.row < 0)
        return {};
    if (spot.isRemove)
        return tr("Remove from the list");
    return gripOf(rectOf(spot.row)).adjusted(-6, -10, 6, 10).contains(place)
               ? tr("Drag to reorder")
               : m_rows.item(spot.row).name.toHtmlEscaped();
}

bool MergeList::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        QToolTip::showText(help->globalPos(), toolTipAt(help->pos()), this);
        return true;
    }
    if (event->type() == QEvent::Leave)
        setHovered({});
    return QListView::viewportEvent(event);
}

void MergeList::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    PictureList::mousePressEvent(event);
    m_pressed = spotAt(event->pos());
    if (m_pressed.row >= 0)
        setCurrentRow(m_pressed.row);
    viewport()->update();
}

void MergeList::mouseMoveEvent(QMouseEvent* event)
{
    setHovered(spotAt(event->pos()));
    if (!(event->buttons() & Qt::LeftButton) || m_pressed.row < 0 || m_pressed.isRemove)
        return;
    if (!m_drag && isPull(*event))
        beginDrag(pressedAt());
    if (m_drag)
        dragTo(event->pos());
}

void MergeList::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const Spot pressed = std::exchange(m_pressed, Spot());
    if (m_drag)
        endDrag(true);
    else if (pressed.isRemove && spotAt(event->pos()) == pressed)
        remove(pressed.row);
    viewport()->update();
}

void MergeList::keyPressEvent(QKeyEvent* event)
{
    const int row = currentIndex().row();
    if (m_drag && event->key() == Qt::Key_Escape)
        endDrag(false);
    else if (m_drag || row < 0)
        event->ignore();
    else if (carryByKey(*event))
        return;
    else if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace)
        remove(row);
    else
        QListView::keyPressEvent(event);
}

void MergeList::focusOutEvent(QFocusEvent* event)
{
    QListView::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason)
        endDrag(false);
}

void MergeList::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byKeyboard = event->reason() == QContextMenuEvent::Keyboard;
    const int row = byKeyboard ? currentIndex().row() : spotAt(event->pos()).row;
    if (row < 0 || m_drag)
        return;
    setCurrentRow(row);
    const QUuid id = m_rows.item(row).id;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto addMove = [this, menu, row, id](const QString& title, Qt::Key key, int steps) {
        const QString shortcut = QKeySequence(Qt::ALT | key).toString(QKeySequence::NativeText);
        QAction* entry = menu->addAction(title + QLatin1Char('\t') + shortcut, this,
                                         [this, id, steps] { move(m_rows.rowOf(id), steps); });
        entry->setEnabled(steps < 0 ? row > 0 : row + 1 < m_rows.rowCount());
    };
    addMove(tr("Move Up"), Qt::Key_Up, -1);
    addMove(tr("Move Down"), Qt::Key_Down, 1);
    addMove(tr("Move to Start"), Qt::Key_Home, -m_rows.rowCount());
    addMove(tr("Move to End"), Qt::Key_End, m_rows.rowCount());
    menu->addSeparator();
    menu->addAction(tr("Remove from the list"), this, [this, id] { m_model.merge.remove(id); });
    menu->popup(byKeyboard ? viewport()->mapToGlobal(rectOf(row).center()) : event->globalPos());
}

void MergeList::remove(int row)
{
    m_model.merge.remove(m_rows.item(row).id);
}

// By so many rows, negative upwards; it stops at both ends.
void MergeList::move(int row, int steps)
{
    const int to = std::clamp(row + steps, 0, std::max(0, m_rows.rowCount() - 1));
    if (row < 0 || to == row)
        return;
    m_model.merge.move({row}, to > row ? to + 1 : to);
    QListView::scrollTo(currentIndex());
}

} // namespace folvane
