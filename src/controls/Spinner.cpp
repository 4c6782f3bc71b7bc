#include "controls/Spinner.h"

#include "controls/style/Theme.h"

#include <QPainter>

namespace folvane {

void drawSpinner(QPainter& painter, const QPointF& center, double diameter, int step)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(center);
    for (int spoke = 0; spoke < spinnerSteps; ++spoke) {
        const int age = (step - spoke + spinnerSteps) % spinnerSteps;
        QColor color = theme::secondaryText;
        color.setAlphaF(0.15F + 0.75F * (1 - static_cast<float>(age) / spinnerSteps));
        painter.setPen(QPen(color, diameter * 0.09, Qt::SolidLine, Qt::RoundCap));
        painter.save();
        painter.rotate(360.0 / spinnerSteps * spoke);
        painter.drawLine(QPointF(0, -diameter * 0.26), QPointF(0, -diameter * 0.45));
        painter.restore();
    }
    painter.restore();
}

Spinner::Spinner(int diameter, QWidget* parent) : QWidget(parent)
{
    setFixedSize(diameter, diameter);
}

void Spinner::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawSpinner(painter, QRectF(rect()).center(), width(), m_step);
}

void Spinner::showEvent(QShowEvent*)
{
    m_timer.start(spinnerInterval, this);
}

void Spinner::hideEvent(QHideEvent*)
{
    m_timer.stop();
}

void Spinner::timerEvent(QTimerEvent*)
{
    m_step = (m_step + 1) % spinnerSteps;
    update();
}

} // namespace folvane
