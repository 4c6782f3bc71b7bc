#include "controls/ControlGroup.h"

#include "controls/PaintedButton.h"
#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"

#include <QHBoxLayout>

namespace folvane {

namespace {

constexpr QSize segmentSize(38, 32);
constexpr double radius = 10;
constexpr int iconSide = 18;

class IconSegment : public PaintedButton {
public:
    IconSegment(Icon icon, QWidget* group) : PaintedButton(QString(), Qt::TabFocus, group), m_icon(icon)
    {
        setFixedSize(segmentSize);
    }

protected:
    void draw(QPainter& painter, const ControlState& state) const override
    {
        const QRectF inner = QRectF(rect()).adjusted(3, 3, -3, -3);
        state.wash(painter, continuousRect(inner, radius - 3));
        if (state.hasFocus)
            painter.strokePath(continuousRect(inner.adjusted(1, 1, -1, -1), radius - 4),
                               QPen(theme::focus, 2));
        const QRectF box((width() - iconSide) / 2.0, (height() - iconSide) / 2.0, iconSide, iconSide);
        drawIcon(painter, m_icon, box, theme::faded(theme::accentDeep, state.opacity()));
    }

private:
    Icon m_icon;
};

} // namespace

ControlGroup::ControlGroup(QWidget* parent) : QWidget(parent), m_row(new QHBoxLayout(this))
{
    m_row->setContentsMargins(0, 0, 0, 0);
    m_row->setSpacing(1); // the line between
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QAbstractButton* ControlGroup::addButton(Icon icon, const QString& name, const QString& tip)
{
    auto* segment = new IconSegment(icon, this);
    segment->setAccessibleName(name);
    segment->setToolTip(tip);
    m_row->addWidget(segment);
    return segment;
}

void ControlGroup::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = rect();
    painter.fillPath(continuousRect(frame, radius), theme::surface);
    painter.strokePath(continuousRect(frame.adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5),
                       QPen(theme::hairline, 1));
    for (int i = 1; i < m_row->count(); ++i)
        painter.fillRect(QRect(m_row->itemAt(i)->geometry().left() - 1, 7, 1, height() - 14),
                         theme::hairline);
}

} // namespace folvane
