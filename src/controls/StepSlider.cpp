#include "controls/StepSlider.h"

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

StepSlider::StepSlider(const QString& name, const QStringList& titles, QWidget* parent)
    : QAbstractSlider(parent), m_titles(titles)
{
    setOrientation(Qt::Horizontal);
    setRange(0, int(titles.size()) - 1);
    setPageStep(3);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(name);
    setAccessibleDescription(title());
}

QSize StepSlider::sizeHint() const
{
    return {160, int(knobSide + 2 * edge)};
}

// Readers that cannot ask for the words of a value read the description.
void StepSlider::sliderChange(SliderChange change)
{
    QAbstractSlider::sliderChange(change);
    if (change == SliderValueChange)
        setAccessibleDescription(title());
}

double StepSlider::placeOf(int step) const
{
    return firstPlace + (width() - 2 * firstPlace) * step / maximum();
}

int StepSlider::stepAt(double place) const
{
    const double step = (place - firstPlace) / (width() - 2 * firstPlace) * maximum();
    return std::clamp(qRound(step), 0, maximum());
}

void StepSlider::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    setSliderDown(true);
    setSliderPosition(stepAt(event->position().x()));
}

void StepSlider::mouseMoveEvent(QMouseEvent* event)
{
    if (isSliderDown())
        setSliderPosition(stepAt(event->position().x()));
}

void StepSlider::mouseReleaseEvent(QMouseEvent*)
{
    setSliderDown(false);
    update();
}

void StepSlider::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF knob = center(placeOf(sliderPosition()));
    fillBar(painter, center(placeOf(0)), center(placeOf(maximum())), theme::fieldBorder);
    fillBar(painter, center(placeOf(0)), knob, theme::accent);
    drawKnob(painter, square(knob, knobSide));
}

QPointF StepSlider::center(double place) const
{
    return {place, height() / 2.0};
}

void StepSlider::drawKnob(QPainter& painter, const QRectF& knob) const
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
