#include "controls/Button.h"

#include "controls/appearance.h"
#include "controls/style/ControlState.h"
#include "controls/style/Shadow.h"
#include "controls/style/continuousRect.h"
#include "controls/style/drawFaded.h"
#include "controls/style/focusRing.h"
#include "controls/style/visualMargin.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QVariantAnimation>

namespace folvane {

namespace {

struct Metrics {
    double fontSize;
    int horizontal;
    int vertical;
    double radius;
    int icon;
};

Metrics metrics(Button::Kind kind)
{
    switch (kind) {
    case Button::Kind::Primary: return {14, 22, 10, 12, 18};
    case Button::Kind::Secondary: return {14, 18, 10, 12, 18};
    case Button::Kind::Tool: return {13, 12, 8, 10, 16};
    }
    Q_UNREACHABLE();
}

constexpr int iconGap = 6;
constexpr int pressMilliseconds = 120;

struct PressedLook {
    double opacity;
    double scale;
};
constexpr PressedLook pressedPrimary{0.85, 0.98};

Shadow shadowOf(const QColor& color)
{
    return {theme::faded(color, 0.25), 8, 4};
}

} // namespace

Button::Button(Kind kind, const QString& text, QWidget* parent)
    : QPushButton(text, parent), m_kind(kind), m_pressing(new QVariantAnimation(this))
{
    setFont(interfaceFont(metrics(kind).fontSize, Weight::SemiBold));
    setIconSize(QSize(metrics(kind).icon, metrics(kind).icon));
    setAutoDefault(false);
    setFocusPolicy(Qt::TabFocus); // a click leaves the keyboard where it works
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    refreshMargin();
    m_pressing->setEasingCurve(QEasingCurve::OutCubic);
    connect(m_pressing, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { setPress(value.toDouble()); });
    connect(this, &QPushButton::pressed, this, [this] { animatePress(1); });
    connect(this, &QPushButton::released, this, [this] { animatePress(0); });
}

void Button::refreshMargin()
{
    const QMargins ring = focusRingMargins;
    setVisualMargin(*this, m_kind == Kind::Primary ? shadowOf(accent()).margins() | ring : ring);
}

void Button::setDestructive(bool destructive)
{
    if (destructive == m_destructive)
        return;
    m_destructive = destructive;
    update();
}

void Button::setSymbol(Icon icon)
{
    if (icon == m_symbol)
        return;
    m_symbol = icon;
    updateGeometry();
    update();
}

void Button::setIconOnly(bool iconOnly)
{
    if (iconOnly == m_iconOnly)
        return;
    m_iconOnly = iconOnly;
    updateGeometry();
    update();
}

int Button::labelWidth() const
{
    const int icon = m_symbol ? iconSize().width() : 0;
    if (!showsText())
        return icon;
    const int words = fontMetrics().size(Qt::TextShowMnemonic | Qt::TextSingleLine, text()).width();
    return words + (icon > 0 ? icon + iconGap : 0);
}

QSize Button::sizeHint() const
{
    const Metrics m = metrics(m_kind);
    const int height = fontMetrics().height() + 2 * m.vertical;
    const int width = showsText() ? labelWidth() + 2 * m.horizontal : height;
    return QSize(width, height).grownBy(visualMargin(*this));
}

QRect Button::frame() const
{
    return rect().marginsRemoved(visualMargin(*this));
}

QColor Button::accent() const
{
    return m_destructive ? theme::danger : theme::accent;
}

QColor Button::labelColor() const
{
    if (m_kind == Kind::Primary)
        return theme::surface;
    return m_destructive ? theme::danger : theme::accentDeep;
}

void Button::setPress(double press)
{
    m_press = press;
    update();
}

// Only the primary button gives way; the others change at once.
void Button::animatePress(double target)
{
    m_pressing->stop();
    const bool moves = style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) > 0;
    if (m_kind != Kind::Primary || !moves || !isVisible()) {
        setPress(target);
        return;
    }
    m_pressing->setDuration(pressMilliseconds);
    m_pressing->setStartValue(m_press);
    m_pressing->setEndValue(target);
    m_pressing->start();
}

void Button::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::EnabledChange && !isEnabled()) {
        m_pressing->stop();
        m_press = 0;
    }
    QPushButton::changeEvent(event);
}

double Button::opacity(const ControlState& state) const
{
    if (!state.isEnabled)
        return disabledOpacity;
    return 1 - m_press * (1 - (m_kind == Kind::Primary ? pressedPrimary.opacity : pressedOpacity));
}

void Button::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_kind == Kind::Primary && m_press > 0) {
        const QPointF center = QRectF(frame()).center();
        painter.translate(center);
        const double scale = 1 - m_press * (1 - pressedPrimary.scale);
        painter.scale(scale, scale);
        painter.translate(-center);
    }
    const ControlState state = stateOf(*this, isDown());
    drawFaded(painter, rect(), opacity(state), [&](QPainter& onto) { draw(onto, state); });
}

void Button::draw(QPainter& painter, const ControlState& state) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    drawFrame(painter, state);
    if (state.hasFocus)
        drawFocusRing(painter, frame(), metrics(m_kind).radius);
    drawLabel(painter);
}

void Button::drawFrame(QPainter& painter, const ControlState& state) const
{
    const QRectF shape = frame();
    const QPainterPath path = continuousRect(shape, metrics(m_kind).radius);
    if (m_kind == Kind::Primary) {
        shadowOf(accent()).draw(painter, shape, metrics(m_kind).radius);
        painter.fillPath(path, m_destructive ? QBrush(theme::danger) : QBrush(theme::accentGradient(shape)));
        if (state.isHovered())
            painter.fillPath(path, theme::glow);
        return;
    }
    painter.fillPath(path, theme::surface);
    if (state.isHovered())
        painter.fillPath(path, theme::hover);
    painter.strokePath(continuousRect(shape.adjusted(0.5, 0.5, -0.5, -0.5), metrics(m_kind).radius - 0.5),
                       QPen(theme::hairline, 1));
}

void Button::drawLabel(QPainter& painter) const
{
    QRectF room = frame();
    room.setLeft(room.left() + (room.width() - labelWidth()) / 2);
    if (m_symbol) {
        const QRectF box(QPointF(room.left(), room.center().y() - iconSize().height() / 2.0), iconSize());
        drawIcon(painter, *m_symbol, box, labelColor());
        room.setLeft(box.right() + iconGap);
    }
    if (!showsText())
        return;
    painter.setPen(labelColor());
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextShowMnemonic,
                     text());
}

} // namespace folvane
