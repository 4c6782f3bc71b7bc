#pragma once

#include <QAbstractSlider>
#include <QStringList>

namespace folvane {

/// A horizontal slider over a few steps, each of which has a title. A click goes to the step under it; the arrow keys,
/// Home and End move it. Screen readers say the title of the step.
class StepSlider : public QAbstractSlider {
    Q_OBJECT

public:
    /// `name` is what a screen reader calls the question. At least two titles.
    StepSlider(const QString& name, const QStringList& titles, QWidget* parent = nullptr);

    /// The title of the present step.
    QString title() const { return m_titles[value()]; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void sliderChange(SliderChange change) override;

private:
    double placeOf(int step) const;
    int stepAt(double place) const;
    QPointF center(double place) const;
    void drawKnob(QPainter& painter, const QRectF& knob) const;

    const QStringList m_titles;
};

} // namespace folvane
