#pragma once

#include "tools/drawing/InkDrawing.h"

#include <QPixmap>
#include <QPointerEvent>
#include <QWidget>

#include <optional>
#include <utility>

namespace folvane {

/// White paper with a line to sign on, for a mouse, a pen or a finger. Whoever touches it first draws until he lets go.
class DrawingCanvas : public QWidget {
    Q_OBJECT

public:
    explicit DrawingCanvas(QSize size, QWidget* parent = nullptr);

    /// All finished strokes.
    const InkDrawing& drawing() const { return m_drawing; }
    /// The ink of all strokes, also of those that are there.
    void setInk(StampInk ink);
    void clear();

signals:
    /// A stroke has been finished, or all are gone.
    void strokesChanged();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    using Hand = std::pair<const QInputDevice*, int>;

    void follow(const QPointerEvent& event);
    void follow(const Hand& hand, const QPointF& place, QEventPoint::State state);
    void lead(const QPointF& place);
    void finish();
    void drop();
    const QPixmap& finished();

    InkDrawing m_drawing;
    Stroke m_current;
    std::optional<Hand> m_hand; ///< which draws m_current
    QPixmap
        m_finished; ///< the finished strokes as they were last shown; null when they are another colour or gone
};

} // namespace folvane
