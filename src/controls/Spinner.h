#pragma once

#include <QBasicTimer>
#include <QWidget>

namespace folvane {

inline constexpr int spinnerSteps = 12;
inline constexpr int spinnerInterval = 80; ///< milliseconds from step to step

/// Draws the sign of work under way, in the given step of its turn.
void drawSpinner(QPainter& painter, const QPointF& center, double diameter, int step);

/// The sign of work under way; it turns only while it can be seen.
class Spinner : public QWidget {
    Q_OBJECT

public:
    explicit Spinner(int diameter, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    QBasicTimer m_timer;
    int m_step = 0;
};

} // namespace folvane
