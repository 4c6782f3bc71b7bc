#include "tools/drawing/DrawingCanvas.h"

#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include <cmath>

namespace folvane {

namespace {

constexpr double cornerRadius = 10;
constexpr int lineInset = 40;
constexpr int lineHeight = 50; // above the lower edge

/// What the system makes of a pen or finger for those who know mice only.
bool isEmulated(const QPointerEvent& event)
{
    const auto* mouse = dynamic_cast<const QMouseEvent*>(&event);
    return mouse && mouse->source() != Qt::MouseEventNotSynthesized;
}

/// Pens have buttons, too; their tip counts as the left one.
bool isOtherButton(const QPointerEvent& event)
{
    const auto* single = dynamic_cast<const QSinglePointEvent*>(&event);
    return single && single->button() != Qt::NoButton && single->button() != Qt::LeftButton;
}

/// The second press of a double click is one like any other.
QEventPoint::State stateOf(const QEventPoint& point, const QPointerEvent& event)
{
    return event.type() == QEvent::MouseButtonDblClick ? QEventPoint::Pressed : point.state();
}

/// Around what another place at its end changes of a line.
QRect endOf(const Stroke& stroke)
{
    const QRectF places = QPolygonF(stroke.last(std::min<qsizetype>(3, stroke.size()))).boundingRect();
    return places.adjusted(-inkReach, -inkReach, inkReach, inkReach).toAlignedRect();
}

} // namespace

DrawingCanvas::DrawingCanvas(QSize size, QWidget* parent) : QWidget(parent)
{
    m_drawing.size = size;
    setFixedSize(size);
    setAttribute(Qt::WA_AcceptTouchEvents);
    setCursor(Qt::CrossCursor);
    setAccessibleName(tr("Drawing area"));
    setAccessibleDescription(tr("Draw here with the mouse, the touchpad, a pen or a finger."));
}

void DrawingCanvas::setInk(StampInk ink)
{
    m_drawing.ink = ink;
    m_finished = QPixmap();
    update();
}

void DrawingCanvas::clear()
{
    drop();
    m_drawing.strokes.clear();
    m_finished = QPixmap();
    update();
    emit strokesChanged();
}

// What is taken here becomes no event of the mouse, and moves no window.
bool DrawingCanvas::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
        event->accept();
        follow(*static_cast<QPointerEvent*>(event));
        return true;
    case QEvent::TouchCancel:
    case QEvent::Hide: drop(); break;
    default: break;
    }
    return QWidget::event(event);
}

void DrawingCanvas::follow(const QPointerEvent& event)
{
    if (isEmulated(event) || isOtherButton(event))
        return;
    for (const QEventPoint& point : event.points())
        follow({event.device(), point.id()}, point.position(), stateOf(point, event));
}

void DrawingCanvas::follow(const Hand& hand, const QPointF& place, QEventPoint::State state)
{
    if (state == QEventPoint::Pressed && hand == m_hand)
        finish(); // it let go elsewhere
    if (state == QEventPoint::Pressed && !m_hand)
        m_hand = hand;
    if (hand != m_hand)
        return;
    switch (state) {
    case QEventPoint::Pressed:
    case QEventPoint::Updated: lead(place); break;
    case QEventPoint::Released: finish(); break;
    default: break;
    }
}

void DrawingCanvas::lead(const QPointF& place)
{
    m_current.append(place);
    update(endOf(m_current));
}

void DrawingCanvas::finish()
{
    m_hand.reset();
    m_drawing.strokes.append(std::exchange(m_current, {}));
    if (!m_finished.isNull()) {
        QPainter painter(&m_finished);
        painter.setRenderHint(QPainter::Antialiasing);
        drawInk(painter, strokePath(m_drawing.strokes.last()), m_drawing.ink);
    }
    emit strokesChanged();
}

void DrawingCanvas::drop()
{
    m_hand.reset();
    m_current.clear();
    update();
}

const QPixmap& DrawingCanvas::finished()
{
    const double scale = devicePixelRatioF();
    if (!m_finished.isNull() && m_finished.devicePixelRatio() == scale)
        return m_finished;
    m_finished = QPixmap(int(std::ceil(width() * scale)), int(std::ceil(height() * scale)));
    m_finished.setDevicePixelRatio(scale);
    m_finished.fill(Qt::transparent);
    QPainter painter(&m_finished);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Stroke& stroke : m_drawing.strokes)
        drawInk(painter, strokePath(stroke), m_drawing.ink);
    return m_finished;
}

void DrawingCanvas::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(continuousRect(rect(), cornerRadius), theme::surface);
    painter.fillRect(lineInset, height() - lineHeight, width() - 2 * lineInset, 1, theme::hairline);
    painter.drawPixmap(0, 0, finished());
    drawInk(painter, strokePath(m_current, event->rect()), m_drawing.ink);
    painter.strokePath(continuousRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius - 0.5),
                       QPen(theme::hairline, 1));
}

} // namespace folvane
