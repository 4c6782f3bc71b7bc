#include "viewParts/PictureList.h"

#include "controls/Spinner.h"
#include "viewParts/stampsOn.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>

namespace folvane {

PictureList::PictureList(AppModel& model, const Pictures& pictures, QWidget* parent)
    : QListView(parent), m_stamps(model.stampPictures), m_shown(pictures), m_pictures(model.thumbnails())
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    setEditTriggers(NoEditTriggers);
    viewport()->setAutoFillBackground(false);
    connect(&m_pictures, &PagePictures::changed, viewport(), qOverload<>(&QWidget::update));
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &PictureList::wantPictures);
}

void PictureList::wantPictures()
{
    m_pictures.setRoom(m_shown.room * devicePixelRatioF());
    m_pictures.want(isVisible() ? keysOnScreen() : QList<PagePictures::Key>());
    if (m_pictures.isComplete())
        m_spinner.stop();
    else if (!m_spinner.isActive())
        m_spinner.start(spinnerInterval, this);
    viewport()->update();
}

PagePictures::Key PictureList::keyOf(const PageItem& page) const
{
    return {page.source, page.turn, m_shown.longSide};
}

QList<PagePictures::Key> PictureList::keysOf(std::span<const PageItem> pages) const
{
    QList<PagePictures::Key> keys;
    for (const PageItem& page : pages)
        keys.append(keyOf(page));
    return keys;
}

PaperPicture PictureList::paperOf(const PageItem& page) const
{
    const PagePictures::Key key = keyOf(page);
    return {m_pictures.picture(key), m_pictures.state(key) == PagePictures::State::Failed, m_spinnerStep,
            stampsOn(page, m_shown.room.width() * devicePixelRatioF(), m_stamps)};
}

void PictureList::timerEvent(QTimerEvent* event)
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

void PictureList::showEvent(QShowEvent* event)
{
    QListView::showEvent(event);
    wantPictures();
}

void PictureList::hideEvent(QHideEvent* event)
{
    QListView::hideEvent(event);
    wantPictures();
}

bool PictureList::viewportEvent(QEvent* event)
{
    const bool handled = QListView::viewportEvent(event);
    if (event->type() == QEvent::Resize)
        wantPictures();
    return handled;
}

void PictureList::setCurrentRow(int row)
{
    selectionModel()->setCurrentIndex(model()->index(row, 0), QItemSelectionModel::NoUpdate);
}

void PictureList::keepCurrentRow(int now, int before)
{
    setCurrentRow(now >= 0 ? now : std::min(before, model()->rowCount() - 1));
}

// The list view would name no row where it does not lay them out itself.
void PictureList::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QAbstractItemView::currentChanged(current, previous);
    if (current.isValid() && hasFocus())
        tellReaders(QAccessible::Focus, current.row());
}

void PictureList::tellReaders(QAccessible::Event event, int row)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent told(this, event);
    told.setChild(row);
    QAccessible::updateAccessibility(&told);
}

void PictureList::mousePressEvent(QMouseEvent* event)
{
    m_pressedAt = event->position().toPoint();
}

bool PictureList::isPull(const QMouseEvent& event) const
{
    const QPoint way = event.position().toPoint() - m_pressedAt;
    return event.buttons().testFlag(Qt::LeftButton)
           && way.manhattanLength() >= QApplication::startDragDistance();
}

bool PictureList::carryByKey(const QKeyEvent& event)
{
    if (!event.modifiers().testFlag(Qt::AltModifier))
        return false;
    const int all = model()->rowCount();
    switch (event.key()) {
    case Qt::Key_Up: carry(-columns()); return true;
    case Qt::Key_Down: carry(columns()); return true;
    case Qt::Key_Home: carry(-all); return true;
    case Qt::Key_End: carry(all); return true;
    default: return false;
    }
}

} // namespace folvane
