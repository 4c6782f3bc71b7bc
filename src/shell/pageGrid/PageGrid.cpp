#include "shell/pageGrid/PageGrid.h"

#include "controls/style/Theme.h"
#include "shell/pageGrid/PageSelectionModel.h"

#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace folvane {

PageGrid::PageGrid(AppModel& model, QWidget* parent)
    : PictureList(model, {pagePictureSide, pageCellMetrics.largestPaper()}, parent),
      m_model(model),
      m_selection(new PageSelectionModel(m_pages, this))
{
    setModel(&m_pages);
    setSelectionModel(m_selection);
    setAccessibleName(tr("Pages"));
    setSelectionMode(ExtendedSelection);
    setAcceptDrops(true);
    setAutoScroll(false); // the scroller of drags does
    setAutoFillBackground(true);
}

void PageGrid::setFile(OpenFilePtr file)
{
    if (file == m_file)
        return;
    if (m_file)
        m_scrolledTo[m_file->id] = verticalOffset();
    m_scrolledTo.removeIf([this](const auto& kept) { return !m_model.file(kept.key()); });
    m_watches.clear();
    m_file = std::move(file);
    m_selection->setFile(m_file);
    m_pressed.reset();
    if (!m_file) {
        m_pages.setPages({});
        return;
    }
    m_watches.keep([this] { showPages(); }, m_file->pages);
    m_watches.keep([this] { showSelection(); }, m_file->selection);
    verticalScrollBar()->setValue(m_scrolledTo.value(m_file->id, 0));
}

void PageGrid::showPages()
{
    const int before = currentIndex().row();
    const std::optional<QUuid> current = pageAt(before);
    m_pages.setPages(m_file->pages.value());
    if (current)
        keepCurrentRow(m_pages.rowOf(*current), before);
    doItemsLayout();
    showSelection();
    wantPictures();
}

void PageGrid::showSelection()
{
    m_selection->mirror();
    viewport()->update();
}

void PageGrid::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QAbstractItemView::selectionChanged(selected, deselected);
    if (const QModelIndexList added = selected.indexes(); added.size() == 1)
        tellReaders(QAccessible::SelectionAdd, added.first().row());
    else
        tellReaders(QAccessible::SelectionWithin, currentIndex().row());
}

QList<PagePictures::Key> PageGrid::keysOnScreen() const
{
    const auto [first, last] = rowsOnScreen();
    return keysOf(std::span(m_pages.pages()).subspan(size_t(first), size_t(last - first)));
}

std::optional<QUuid> PageGrid::pageAt(int row) const
{
    if (row < 0 || row >= m_pages.rowCount())
        return std::nullopt;
    return m_pages.pages()[size_t(row)].id;
}

// Layout

PageGridLayout PageGrid::pageLayout() const
{
    // The scroll bar stands in the margin beside the cells, so that nothing moves when it comes and goes.
    return {m_pages.rowCount(), width()};
}

std::pair<int, int> PageGrid::rowsOnScreen() const
{
    return pageLayout().between(verticalOffset(), verticalOffset() + viewport()->height());
}

QRect PageGrid::visualRect(const QModelIndex& index) const
{
    return index.isValid() ? pageLayout().cell(index.row()).translated(0, -verticalOffset()) : QRect();
}

QModelIndex PageGrid::indexAt(const QPoint& point) const
{
    const int row = pageLayout().at(toContent(point));
    return row < 0 ? QModelIndex() : m_pages.index(row);
}

int PageGrid::verticalOffset() const
{
    return verticalScrollBar()->value();
}

void PageGrid::doItemsLayout()
{
    QAbstractItemView::doItemsLayout();
}

void PageGrid::updateGeometries()
{
    const int page = viewport()->height();
    verticalScrollBar()->setPageStep(page);
    verticalScrollBar()->setSingleStep(40);
    verticalScrollBar()->setRange(0, std::max(0, pageLayout().height() - page));
    QAbstractItemView::updateGeometries();
}

void PageGrid::resizeEvent(QResizeEvent* event)
{
    QAbstractItemView::resizeEvent(event);
}

void PageGrid::scrollTo(const QModelIndex& index, ScrollHint)
{
    constexpr int air = 12;
    const QRect cell = visualRect(index).adjusted(0, -air, 0, air);
    QScrollBar* bar = verticalScrollBar();
    if (cell.top() < 0)
        bar->setValue(bar->value() + cell.top());
    else if (cell.bottom() > viewport()->height())
        bar->setValue(bar->value() + cell.bottom() - viewport()->height());
}

QRegion PageGrid::visualRegionForSelection(const QItemSelection& selection) const
{
    QRegion region;
    for (const QModelIndex& index : selection.indexes())
        region += visualRect(index);
    return region;
}

// Painting

void PageGrid::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    const PageGridLayout layout = pageLayout();
    const auto [first, last] = rowsOnScreen();
    for (int row = first; row < last; ++row) {
        drawPageCell(painter, layout.cell(row).translated(0, -verticalOffset()), cellAt(row));
    }
    if (const std::optional<DropMark> mark = dropMark())
        drawDropMark(painter, *mark);
}

PageCell PageGrid::cellAt(int row) const
{
    const PageItem& page = m_pages.pages()[size_t(row)];
    return {
        .number = row + 1,
        .isSelected = m_file && m_file->selection.value().contains(page.id),
        .hasStamps = !page.stamps.empty(),
        .isLifted = m_lifted.contains(page.id),
        .hasKeyboard = m_byKeyboard && hasFocus() && currentIndex().row() == row,
        .paper = paperOf(page),
    };
}

void PageGrid::drawDropMark(QPainter& painter, const DropMark& mark) const
{
    const QRect cell = pageLayout().cell(mark.cell).translated(0, -verticalOffset());
    constexpr int distance = 9; // from the cell
    constexpr int inset = 4;    // at both ends of its frame
    const int x = mark.isBehind ? cell.right() + distance : cell.left() - distance;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(theme::accent, 4, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(x, cell.top() + inset, x, cell.top() + pageCellMetrics.frameHeight() - inset);
}

} // namespace folvane
