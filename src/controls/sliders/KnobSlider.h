#pragma once

#include <QAbstractSlider>

namespace folvane {

/// A horizontal slider with a round knob on a bar, which is filled from 0 to the knob. A click goes to the value under it,
/// the mouse drags it, and so do the wheel, the arrow and page keys, Home and End. Screen readers say the words of its value.
class KnobSlider : public QAbstractSlider {
    Q_OBJECT

public:
    /// The present value in words.
    virtual QString valueText() const = 0;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    /// `name` is what a screen reader calls it. Who derives gives it its range.
    KnobSlider(const QString& name, QWidget* parent);

    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void sliderChange(SliderChange change) override;

private:
    QPointF center(int value) const;
    int valueAt(double place) const;
    void drawKnob(QPainter& painter, const QRectF& knob) const;
};

} // namespace folvane
