#include "controls/dragging/DragScroller.h"

#include "controls/dragging/dragScrollSpeed.h"

#include <QAbstractScrollArea>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTimerEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace folvane {

namespace {

constexpr int interval = 16;        // milliseconds
constexpr double longestStep = 0.1; // seconds: what was held up does not leap

} // namespace

DragScroller::DragScroller(QAbstractScrollArea& area) : QObject(&area), m_area(area) {}

// The drag of the system swallows the wheel and the keys in a filter of its own, which it installs as it begins. The last one to come is
// asked first, so this one waits until the drag runs.
void DragScroller::begin()
{
    m_ownDrag = true;
    const auto listen = [this] {
        if (m_ownDrag)
            qApp->installEventFilter(this);
    };
    QMetaObject::invokeMethod(this, listen, Qt::QueuedConnection);
}

void DragScroller::end()
{
    m_ownDrag = false;
    m_seesMouse = false;
    qApp->removeEventFilter(this);
    stop();
}

void DragScroller::follow(const QPoint& pointer)
{
    const int height = m_area.viewport()->height();
    const double speed = dragScrollSpeed(pointer.y(), height, m_seconds);
    const bool beside = pointer.x() < 0 || pointer.x() >= m_area.width();
    m_pointer = pointer.y();
    if (speed == 0 || beside) {
        stop();
        return;
    }
    if (m_speed * speed < 0) // the other edge
        stop();
    m_speed = speed;
    if (m_timer.isActive())
        return;
    m_lastStep.start();
    m_timer.start(interval, Qt::PreciseTimer, this);
}

void DragScroller::leave()
{
    if (!m_seesMouse)
        stop();
}

void DragScroller::stop()
{
    m_timer.stop();
    m_seconds = 0;
    m_speed = 0;
    m_rest = 0;
}

void DragScroller::timerEvent(QTimerEvent*)
{
    const double passed = std::min(longestStep, double(m_lastStep.restart()) / 1000);
    m_seconds += passed;
    m_speed = dragScrollSpeed(m_pointer, m_area.viewport()->height(), m_seconds);
    m_rest += m_speed * passed;
    const double pixels = std::trunc(m_rest);
    m_rest -= pixels;
    QScrollBar* bar = m_area.verticalScrollBar();
    bar->setValue(bar->value() + int(pixels));
}

bool DragScroller::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseMove: {
        const QPointF place = static_cast<QMouseEvent*>(event)->globalPosition();
        m_seesMouse = true;
        follow(m_area.viewport()->mapFromGlobal(place.toPoint()));
        return false;
    }
    case QEvent::Wheel: turnWheel(*static_cast<QWheelEvent*>(event)); return true;
    case QEvent::KeyPress: return press(*static_cast<QKeyEvent*>(event));
    default: return false;
    }
}

// The bar gets it by hand: sent the usual way, it would come to the filter of the drag after all.
void DragScroller::turnWheel(const QWheelEvent& event)
{
    QScrollBar* bar = m_area.verticalScrollBar();
    QWheelEvent forBar(bar->rect().center(), event.globalPosition(), event.pixelDelta(), event.angleDelta(),
                       event.buttons(), event.modifiers(), event.phase(), event.inverted());
    bar->event(&forBar);
}

bool DragScroller::press(const QKeyEvent& event)
{
    QScrollBar* bar = m_area.verticalScrollBar();
    switch (event.key()) {
    case Qt::Key_PageUp: bar->triggerAction(QScrollBar::SliderPageStepSub); return true;
    case Qt::Key_PageDown: bar->triggerAction(QScrollBar::SliderPageStepAdd); return true;
    case Qt::Key_Home: bar->triggerAction(QScrollBar::SliderToMinimum); return true;
    case Qt::Key_End: bar->triggerAction(QScrollBar::SliderToMaximum); return true;
    default: return false;
    }
}

} // namespace folvane
