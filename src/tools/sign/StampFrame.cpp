#include "tools/sign/StampFrame.h"

#include "controls/style/Shadow.h"
#include "controls/style/icons.h"

#include <QPainter>
#include <QTransform>

namespace folvane {

namespace {

constexpr double gap = 4;   // from the picture to its outline
constexpr double stem = 30; // from the outline to the turn handle
constexpr double lineWidth = 1.5;
constexpr double handleSide = 20;
constexpr double hitSide = 36;
constexpr double iconSide = 13;
const Shadow shadow{theme::faded(theme::black, 0.2), 4, 1};

QRectF square(QPointF center, double side)
{
    return {center.x() - side / 2, center.y() - side / 2, side, side};
}

void drawHandle(QPainter& painter, QPointF center, Icon icon, double rotation)
{
    const QRectF disc = square(center, handleSide);
    shadow.draw(painter, disc, handleSide / 2);
    painter.setPen(QPen(theme::surface, lineWidth));
    painter.setBrush(theme::accent);
    painter.drawEllipse(disc);
    painter.save();
    painter.translate(center);
    painter.rotate(rotation);
    drawIcon(painter, icon, square({}, iconSide), theme::surface);
    painter.restore();
}

} // namespace

QPointF StampFrame::onPage(QPointF fromCenter) const
{
    return m_box.center + QTransform().rotate(m_box.rotation).map(fromCenter);
}

QPointF StampFrame::fromCenter(QPointF onPage) const
{
    return QTransform().rotate(-m_box.rotation).map(onPage - m_box.center);
}

QRectF StampFrame::picture() const
{
    return {-m_box.size.width() / 2, -m_box.size.height() / 2, m_box.size.width(), m_box.size.height()};
}

QRectF StampFrame::outline() const
{
    return picture().adjusted(-gap, -gap, gap, gap);
}

/// From the centre of the upright stamp, so far beyond its outline.
QPointF StampFrame::middleOfTurnSide(double beyond) const
{
    const double y = outline().bottom() + beyond;
    return {0, m_side == TurnSide::Above ? -y : y};
}

QPointF StampFrame::turnHandle() const
{
    return onPage(middleOfTurnSide(stem));
}

QPointF StampFrame::resizeHandle() const
{
    return onPage(outline().bottomRight());
}

StampFrame::Part StampFrame::partAt(QPointF point, bool isSelected) const
{
    if (isSelected && square(turnHandle(), hitSide).contains(point))
        return Part::TurnHandle;
    if (isSelected && square(resizeHandle(), hitSide).contains(point))
        return Part::ResizeHandle;
    return (isSelected ? outline() : picture()).contains(fromCenter(point)) ? Part::Picture : Part::None;
}

QRectF StampFrame::bounds() const
{
    QTransform toPage = QTransform::fromTranslate(m_box.center.x(), m_box.center.y());
    return toPage.rotate(m_box.rotation).mapRect(picture());
}

QRectF StampFrame::outerBounds() const
{
    QTransform toPage = QTransform::fromTranslate(m_box.center.x(), m_box.center.y());
    return toPage.rotate(m_box.rotation).mapRect(outline()) | square(turnHandle(), hitSide)
           | square(resizeHandle(), hitSide);
}

void StampFrame::draw(QPainter& painter) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.save();
    painter.translate(m_box.center);
    painter.rotate(m_box.rotation);
    painter.setPen(QPen(theme::accent, lineWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.drawRect(outline());
    painter.drawLine(middleOfTurnSide(0), middleOfTurnSide(stem));
    painter.restore();
    drawHandle(painter, turnHandle(), Icon::RotateRight, 0);
    drawHandle(painter, resizeHandle(), Icon::Resize, m_box.rotation);
    painter.restore();
}

} // namespace folvane
