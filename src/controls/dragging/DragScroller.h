#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>

class QAbstractScrollArea;
class QKeyEvent;
class QPoint;
class QWheelEvent;

namespace folvane {

/// Scrolls an area that something is dragged over: by itself while the pointer is near its upper or lower edge, also when it rests there,
/// and, in a drag of the area's own, by the wheel and the keys for pages. What shows the drag follows the scroll bar.
class DragScroller : public QObject {
    Q_OBJECT

public:
    explicit DragScroller(QAbstractScrollArea& area);

    /// A drag of the area's own begins. Until end() the mouse is followed beyond the area too.
    void begin();
    void end();

    /// The drag is here, in the viewport.
    void follow(const QPoint& pointer);
    /// It has left the viewport.
    void leave();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void stop();
    void turnWheel(const QWheelEvent& event);
    bool press(const QKeyEvent& event);

    QAbstractScrollArea& m_area;
    bool m_ownDrag = false;
    bool m_seesMouse = false; ///< the window system tells of it during a drag
    int m_pointer = 0;        ///< from the top of the viewport
    QBasicTimer m_timer;
    QElapsedTimer m_lastStep;
    double m_seconds = 0; ///< near this edge
    double m_speed = 0;
    double m_rest = 0; ///< of a pixel
};

} // namespace folvane
