#include "controls/containers/LazyColumn.h"

#include "controls/style/visualMargin.h"

#include <QApplication>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace folvane {

namespace {

constexpr int reach = 400; // how far beyond the screen items are made, so that the Tab key finds the next one
constexpr int step = 60;   // of the arrow keys, where an item is higher than the screen

} // namespace

LazyColumn::LazyColumn(const Measures& measures, MakeItem makeItem, QWidget* parent)
    : QAbstractScrollArea(parent), m_measures(measures), m_makeItem(std::move(makeItem))
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
    viewport()->setBackgroundRole(
        QPalette::NoRole); // below a field, labels would have the colour of its text
    verticalScrollBar()->setSingleStep(step);
    findTops();
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* before, QWidget* now) {
        if (before) // none: the window has become active, and nothing has moved
            follow(now);
    });
}

// The keyboard leaves what dies with it.
LazyColumn::~LazyColumn()
{
    disconnect(qApp, nullptr, this, nullptr);
}

void LazyColumn::setHeader(QWidget* header)
{
    m_header = header;
    m_header->setParent(viewport());
    m_header->installEventFilter(this);
    m_header->show();
    arrange(anchor());
}

void LazyColumn::setItems(const QList<QUuid>& items)
{
    const Anchor before = anchor();
    const qsizetype focused = focusedItem();
    const QUuid withKeyboard = focused < 0 ? QUuid() : m_items[focused];
    m_items = items;
    discardAllBut({items.begin(), items.end()});
    findTops();
    arrange(before);
    if (focused >= 0 && !items.contains(withKeyboard))
        passKeyboardOn(focused);
}

// The keyboard leaves what is hidden, and what it comes to must not move anything yet.
void LazyColumn::discardAllBut(const QSet<QUuid>& kept)
{
    const QScopedValueRollback arranging(m_isArranging, true);
    for (const QUuid& made : m_made.keys())
        if (!kept.contains(made))
            discard(made);
    m_heights.removeIf([&kept](const auto& height) { return !kept.contains(height.key()); });
}

void LazyColumn::scrollToTop()
{
    verticalScrollBar()->setValue(0);
}

int LazyColumn::scroll() const
{
    return verticalScrollBar()->value();
}

int LazyColumn::pageWidth() const
{
    return std::min(viewport()->width() - 2 * m_measures.padding, m_measures.widestPage);
}

int LazyColumn::heightOf(QWidget& widget) const
{
    const QMargins margin = visualMargin(widget);
    const int width = m_width + margin.left() + margin.right();
    const int height = widget.hasHeightForWidth() ? widget.heightForWidth(width) : widget.sizeHint().height();
    return height - margin.top() - margin.bottom();
}

qsizetype LazyColumn::itemAt(int y) const
{
    const auto next = std::upper_bound(m_tops.begin() + 1, m_tops.end(), y + m_measures.spacing);
    return std::min<qsizetype>(next - m_tops.begin() - 1, m_items.size());
}

LazyColumn::Anchor LazyColumn::anchor() const
{
    const qsizetype first = itemAt(scroll());
    const bool isHeaderThere = scroll() < m_tops.front() - m_measures.spacing;
    return isHeaderThere || first == m_items.size() ? Anchor()
                                                    : Anchor{m_items[first], topOf(first) - scroll()};
}

// Each item that is made may turn out higher or lower than was thought, so that others come on screen or leave it.
void LazyColumn::arrange(const Anchor& anchor)
{
    if (m_isArranging || !m_header || pageWidth() <= 0)
        return;
    const QScopedValueRollback arranging(m_isArranging, true);
    measureHeader();
    do {
        findTops();
        scrollTo(anchor);
    } while (make(rangeNearScreen()));
    discardBeyond(rangeNearScreen());
    placeAll();
}

void LazyColumn::measureHeader()
{
    if (std::exchange(m_width, pageWidth()) != pageWidth())
        m_heights.clear();
    m_headerHeight = heightOf(*m_header);
}

void LazyColumn::findTops()
{
    m_tops.assign(1, m_measures.padding + m_headerHeight + m_measures.spacing);
    for (const QUuid& item : m_items)
        m_tops.push_back(m_tops.back() + m_heights.value(item, m_measures.usualHeight) + m_measures.spacing);
}

void LazyColumn::scrollTo(const Anchor& anchor)
{
    const int end = m_tops.back() - m_measures.spacing + m_measures.padding;
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setRange(0, std::max(0, end - viewport()->height()));
    const qsizetype item = anchor.item.isNull() ? -1 : m_items.indexOf(anchor.item);
    if (item >= 0)
        verticalScrollBar()->setValue(topOf(item) - std::max(anchor.distance, topOf(item) - bottomOf(item)));
}

LazyColumn::Range LazyColumn::rangeNearScreen() const
{
    const qsizetype last = itemAt(scroll() + viewport()->height() + reach);
    return {itemAt(scroll() - reach), std::min(last + 1, m_items.size())};
}

/// False when all of them were there.
bool LazyColumn::make(Range range)
{
    bool changes = false;
    for (const QUuid& item : m_items.sliced(range.first, std::max<qsizetype>(range.end - range.first, 0))) {
        QWidget*& widget = m_made[item];
        if (!widget) {
            widget = m_makeItem(item);
            widget->setParent(viewport());
        }
        if (m_heights.contains(item))
            continue;
        m_heights[item] = heightOf(*widget);
        changes = true;
    }
    return changes;
}

void LazyColumn::discardBeyond(Range range)
{
    const QList<QUuid> near = m_items.sliced(range.first, std::max<qsizetype>(range.end - range.first, 0));
    const QWidget* focused = window()->focusWidget();
    for (const QUuid& item : m_made.keys()) {
        const QWidget* widget = m_made[item];
        const bool hasKeyboard = focused && (widget == focused || widget->isAncestorOf(focused));
        if (!near.contains(item) && !hasKeyboard)
            discard(item);
    }
    chainTabs();
}

// It may be in the middle of an event.
void LazyColumn::discard(const QUuid& item)
{
    QWidget* widget = m_made.take(item);
    widget->hide();
    widget->deleteLater();
}

void LazyColumn::placeAll() const
{
    place(*m_header, m_measures.padding, m_headerHeight);
    for (qsizetype item = 0; item < m_items.size(); ++item) {
        if (QWidget* widget = m_made.value(m_items[item])) {
            place(*widget, topOf(item), bottomOf(item) - topOf(item));
            widget->show();
        }
    }
}

void LazyColumn::place(QWidget& widget, int top, int height) const
{
    const QRect frame((viewport()->width() - m_width) / 2, top - scroll(), m_width, height);
    widget.setGeometry(frame.marginsAdded(visualMargin(widget)));
}

void LazyColumn::resizeEvent(QResizeEvent*)
{
    arrange(anchor());
}

void LazyColumn::scrollContentsBy(int, int)
{
    arrange(anchor());
}

bool LazyColumn::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_header && event->type() == QEvent::LayoutRequest)
        arrange(anchor());
    return QAbstractScrollArea::eventFilter(watched, event);
}

} // namespace folvane
