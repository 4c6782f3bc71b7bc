#include "tools/sign/PageStrip.h"

#include "controls/appearance.h"
#include "controls/paletteColors.h"
#include "controls/style/Theme.h"
#include "controls/style/focusRing.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QVariantAnimation>

#include <algorithm>

namespace folvane {

namespace {

// Every page gets the room of an upright sheet: what is above it does not move when its picture comes.
constexpr QSize paperRoom(120, 170);
constexpr int numberGap = 4;
constexpr int numberHeight = 14;
constexpr int betweenPages = 14;
constexpr int padding = 12; // above the first page
constexpr int rowHeight = paperRoom.height() + numberGap + numberHeight + betweenPages;
constexpr double outlineWidth = 2.5;
constexpr double outlineRadius = 4;
constexpr int glideMilliseconds = 250;

/// Only the height of the rows: the strip draws them itself.
class StripRowHeight : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override
    {
        return {paperRoom.width(), rowHeight};
    }
};

} // namespace

PageStrip::PageStrip(AppModel& model, QWidget* parent)
    : PictureList(model, {pagePictureSide, paperRoom}, parent), m_gliding(new QVariantAnimation(this))
{
    setModel(&m_pages);
    setItemDelegate(new StripRowHeight(this));
    setAccessibleName(tr("Pages"));
    setUniformItemSizes(true);
    setSelectionMode(SingleSelection);
    setViewportMargins(0, padding - betweenPages / 2, 0, 0);
    setFixedWidth(stripWidth);
    setGround(*this, theme::background);
    setAutoFillBackground(true);
    verticalScrollBar()->setSingleStep(rowHeight / 3);
    m_gliding->setDuration(glideMilliseconds);
    m_gliding->setEasingCurve(QEasingCurve::InOutQuad);
    connect(m_gliding, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { verticalScrollBar()->setValue(value.toInt()); });
}

void PageStrip::setPages(const std::vector<PageItem>& pages)
{
    m_pages.setPages(pages);
    wantPictures();
}

void PageStrip::setCurrentPage(const std::optional<QUuid>& page)
{
    const int row = page ? m_pages.rowOf(*page) : -1;
    if (row == currentIndex().row())
        return;
    selectionModel()->setCurrentIndex(m_pages.index(row), QItemSelectionModel::ClearAndSelect);
    viewport()->update();
    executeDelayedItemsLayout();
    if (row >= 0)
        glideTo(row * rowHeight - (viewport()->height() - rowHeight) / 2);
}

void PageStrip::glideTo(int offset)
{
    const int to = std::clamp(offset, 0, verticalScrollBar()->maximum());
    m_gliding->stop();
    if (!isVisible())
        return verticalScrollBar()->setValue(to);
    m_gliding->setStartValue(verticalScrollBar()->value());
    m_gliding->setEndValue(to);
    m_gliding->start();
}

std::pair<int, int> PageStrip::rowsOnScreen() const
{
    const int top = verticalScrollBar()->value();
    return {std::clamp(top / rowHeight, 0, m_pages.rowCount()),
            std::clamp((top + viewport()->height()) / rowHeight + 1, 0, m_pages.rowCount())};
}

QList<PagePictures::Key> PageStrip::keysOnScreen() const
{
    const auto [first, last] = rowsOnScreen();
    return keysOf(std::span(m_pages.pages()).subspan(size_t(first), size_t(last - first)));
}

// As wide as the strip: a scroll bar stands beside the pages, in their margin.
QRect PageStrip::rectOf(int row) const
{
    const int top = row * rowHeight - verticalScrollBar()->value();
    return {0, top + betweenPages / 2, width(), rowHeight - betweenPages};
}

void PageStrip::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const auto [first, last] = rowsOnScreen();
    for (int row = first; row < last; ++row)
        drawPage(painter, row);
}

void PageStrip::drawPage(QPainter& painter, int row) const
{
    const bool isCurrent = row == currentIndex().row();
    QRectF room(QPointF(), paperRoom);
    room.moveCenter({width() / 2.0, 0});
    room.moveTop(rectOf(row).top());
    const PaperPicture paper = paperOf(m_pages.pages()[size_t(row)]);
    const QRectF box = paperBox(room, paper);
    drawPaper(painter, box, paper);
    if (isCurrent) {
        constexpr double out = outlineWidth / 2;
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(theme::accent, outlineWidth));
        painter.drawRoundedRect(box.adjusted(-out, -out, out, out), outlineRadius, outlineRadius);
        if (showsFocus(*this))
            drawFocusRing(painter, box.adjusted(-out, -out, out, out), outlineRadius);
    }
    painter.setFont(interfaceFont(11, isCurrent ? Weight::Bold : Weight::Regular));
    painter.setPen(isCurrent ? theme::accentDeep : theme::secondaryText);
    painter.drawText(QRectF(0, room.bottom() + numberGap, width(), numberHeight), Qt::AlignCenter,
                     QString::number(row + 1));
}

void PageStrip::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        choose(indexAt(event->position().toPoint()).row());
}

void PageStrip::keyPressEvent(QKeyEvent* event)
{
    const int row = currentIndex().row();
    const int screen = std::max(1, viewport()->height() / rowHeight);
    switch (event->key()) {
    case Qt::Key_Up: return choose(row - 1);
    case Qt::Key_Down: return choose(row + 1);
    case Qt::Key_PageUp: return choose(std::max(row - screen, 0));
    case Qt::Key_PageDown: return choose(std::min(row + screen, m_pages.rowCount() - 1));
    case Qt::Key_Home: return choose(0);
    case Qt::Key_End: return choose(m_pages.rowCount() - 1);
    default: event->ignore();
    }
}

void PageStrip::choose(int row)
{
    if (row >= 0 && row < m_pages.rowCount())
        emit chosen(m_pages.pages()[size_t(row)].id);
}

} // namespace folvane
