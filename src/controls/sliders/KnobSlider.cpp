#include "controls/sliders/KnobSlider.h"

#include "controls/style/ControlState.h"
#include "controls/style/Shadow.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace folvane {

namespace {

constexpr double knobSide = 20;
constexpr double dotSide = 8; // in the knob
constexpr double barHeight = 4;
constexpr double edge = 4; // around the knob, for its shadow and the focus ring
constexpr double firstPlace = edge + knobSide / 2;
const Shadow lift{theme::faded(theme::black, 0.2), 4, 1};

QRectF square(const QPointF& center, double side)
{
    return {center.x() - side / 2, center.y() - side / 2, side, side};
}

void fillBar(QPainter& painter, const QPointF& from, const QPointF& to, const QColor& color)
{
    painter.setPen(QPen(color, barHeight, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(from, to);
}

} // namespace

KnobSlider::KnobSlider(const QString& name, QWidget* parent) : QAbstractSlider(parent)
{
    setOrientation(Qt::Horizontal);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(name);
}

QSize KnobSlider::sizeHint() const
{
    return {160, int(knobSide + 2 * edge)};
}

// Readers that cannot ask for the words of a value read the description.
void KnobSlider::sliderChange(SliderChange change)
{
    QAbstractSlider::sliderChange(change);
    if (change != SliderOrientationChange)
        setAccessibleDescription(valueText());
}

QPointF KnobSlider::center(int value) const
{
    const double share = double(value - minimum()) / std::max(1, maximum() - minimum());
    return {firstPlace + (width() - 2 * firstPlace) * share, height() / 2.0};
}

int KnobSlider::valueAt(double place) const
{
    const double share = (place - firstPlace) / (width() - 2 * firstPlace);
    return minimum() + qRound(std::clamp(share, 0.0, 1.0) * (maximum() - minimum()));
}

void KnobSlider::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    setSliderDown(true);
    setSliderPosition(valueAt(event->position().x()));
}

void KnobSlider::mouseMoveEvent(QMouseEvent* event)
{
    if (isSliderDown())
        setSliderPosition(valueAt(event->position().x()));
}

void KnobSlider::mouseReleaseEvent(QMouseEvent*)
{
    setSliderDown(false);
    update();
}

void KnobSlider::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF knob = center(sliderPosition());
    fillBar(painter, center(minimum()), center(maximum()), theme::fieldBorder);
    fillBar(painter, center(std::clamp(0, minimum(), maximum())), knob, theme::accent);
    drawKnob(painter, square(knob, knobSide));
}

void KnobSlider::drawKnob(QPainter& painter, const QRectF& knob) const
{
    drawCard(painter, knob, knobSide / 2, lift);
    const ControlState state = stateOf(*this, isSliderDown());
    QPainterPath ground;
    ground.addEllipse(knob);
    state.wash(painter, ground);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme::accent);
    painter.drawEllipse(square(knob.center(), dotSide));
    if (state.hasFocus) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(theme::focus, 2));
        painter.drawEllipse(knob.adjusted(-2, -2, 2, 2));
    }
}

} // namespace folvane
