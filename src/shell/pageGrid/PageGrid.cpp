#include "shell/pageGrid/PageGrid.h"

#include "controls/Spinner.h"
#include "controls/style/Theme.h"
#include "platform/tasks/spawn.h"
#include "shell/pageGrid/pageCell.h"

#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

namespace folvane {

namespace {

constexpr int pictureLongSide = 360; // pixels, at every screen scale

} // namespace

PageGrid::PageGrid(AppModel& model, QWidget* parent)
    : QListView(parent), m_model(model), m_pictures(model.thumbnails())
{
    setModel(&m_pages);
    setAccessibleName(tr("Pages"));
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ExtendedSelection);
    setAcceptDrops(true);
    setAutoScroll(false); // m_scroller does
    viewport()->setAutoFillBackground(false);
    setAutoFillBackground(true);
    connect(&m_pictures, &PagePictures::changed, this, [this] {
        viewport()->update();
        emit picturesChanged();
    });
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
    m_pressed.reset();
    if (!m_file) {
        m_anchor.reset();
        m_pages.setPages({});
        return;
    }
    m_watches.keep([this] { showPages(); }, m_file->pages);
    m_watches.keep([this] { showSelection(); }, m_file->selection);
    verticalScrollBar()->setValue(m_scrolledTo.value(m_file->id, 0));
}

bool PageGrid::isComplete() const
{
    return m_pictures.isComplete();
}

void PageGrid::showPages()
{
    const int before = currentIndex().row();
    const std::optional<QUuid> current = pageAt(before);
    m_pages.setPages(m_file->pages.value());
    if (current)
        selectionModel()->setCurrentIndex(m_pages.index(stillAt(*current, before)),
                                          QItemSelectionModel::NoUpdate);
    doItemsLayout();
    showSelection();
    wantPictures();
}

// A page that is gone leaves its place to the one that came there.
int PageGrid::stillAt(const QUuid& page, int before) const
{
    const int row = m_pages.rowOf(page);
    return row >= 0 ? row : std::min(before, m_pages.rowCount() - 1);
}

void PageGrid::showSelection()
{
    const QSet<QUuid> selected = m_file->selection.value();
    QItemSelection rows;
    for (int row = 0; row < m_pages.rowCount(); ++row) {
        if (!selected.contains(m_pages.pages()[size_t(row)].id))
            continue;
        const bool continues = !rows.isEmpty() && rows.last().bottom() == row - 1;
        const QModelIndex first = continues ? QModelIndex(rows.takeLast().topLeft()) : m_pages.index(row);
        rows.append(QItemSelectionRange(first, m_pages.index(row)));
    }
    const QScopedValueRollback showing(m_showingSelection, true);
    selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
    viewport()->update();
}

// What else than the document selects is somebody who cannot see the pages: it becomes the document's selection.
void PageGrid::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QAbstractItemView::selectionChanged(selected, deselected);
    if (const QModelIndexList added = selected.indexes(); added.size() == 1)
        tellReaders(QAccessible::SelectionAdd, added.first().row());
    else
        tellReaders(QAccessible::SelectionWithin, currentIndex().row());
    if (m_showingSelection || !m_file)
        return;
    QSet<QUuid> pages;
    for (const QModelIndex& index : selectionModel()->selectedIndexes())
        pages.insert(*pageAt(index.row()));
    m_file->selection = pages;
}

// The list view would name no row here, since its own layout is not in use.
void PageGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QAbstractItemView::currentChanged(current, previous);
    if (current.isValid() && hasFocus())
        tellReaders(QAccessible::Focus, current.row());
}

void PageGrid::tellReaders(QAccessible::Event event, int row)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent told(this, event);
    told.setChild(row);
    QAccessible::updateAccessibility(&told);
}

PagePictures::Key PageGrid::key(const PageItem& page) const
{
    return {page.source, page.turn, pictureLongSide};
}

void PageGrid::wantPictures()
{
    m_pictures.setRoom(largestPaper() * devicePixelRatioF());
    QList<PagePictures::Key> keys;
    if (isVisible()) {
        const auto [first, last] = rowsOnScreen();
        for (int row = first; row < last; ++row)
            keys.append(key(m_pages.pages()[size_t(row)]));
    }
    m_pictures.want(keys);
    if (m_pictures.isComplete())
        m_spinner.stop();
    else if (!m_spinner.isActive())
        m_spinner.start(spinnerInterval, this);
    emit picturesChanged();
}

void PageGrid::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_spinner.timerId()) {
        QListView::timerEvent(event);
        return;
    }
    m_spinnerStep = (m_spinnerStep + 1) % spinnerSteps;
    viewport()->update();
    if (m_pictures.isComplete())
        m_spinner.stop();
}

void PageGrid::showEvent(QShowEvent* event)
{
    QListView::showEvent(event);
    wantPictures();
}

void PageGrid::hideEvent(QHideEvent* event)
{
    QListView::hideEvent(event);
    wantPictures();
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
    wantPictures();
}

void PageGrid::scrollContentsBy(int, int)
{
    viewport()->update();
    wantPictures();
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
        .state = m_pictures.state(key(page)),
        .picture = m_pictures.picture(key(page)),
        .spinnerStep = m_spinnerStep,
    };
}

void PageGrid::drawDropMark(QPainter& painter, const DropMark& mark) const
{
    const QRect cell = pageLayout().cell(mark.cell).translated(0, -verticalOffset());
    const int x = mark.isBehind ? cell.right() + 9 : cell.left() - 9;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(theme::accent, 4, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(x, cell.top() + 4, x, cell.top() + 208);
}

} // namespace folvane
