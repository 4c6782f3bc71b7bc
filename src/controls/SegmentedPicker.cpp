#include "controls/SegmentedPicker.h"

#include "controls/PaintedButton.h"
#include "controls/appearance.h"
#include "controls/layouts.h"
#include "controls/style/Shadow.h"
#include "controls/style/continuousRect.h"

#include <QButtonGroup>
#include <QPainter>
#include <QRadioButton>

namespace folvane {

namespace {

constexpr int inset = 3;
constexpr double outerRadius = 10;
constexpr double innerRadius = outerRadius - inset;
const Shadow lift{theme::faded(theme::black, 0.12), 2, 1};

class Segment : public Painted<QRadioButton> {
public:
    Segment(const QString& title, QWidget* picker) : Painted(title, picker)
    {
        setFont(interfaceFont(13, Weight::Medium));
        setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Fixed);
    }

    QSize sizeHint() const override
    {
        return fontMetrics().size(Qt::TextSingleLine | Qt::TextShowMnemonic, text()) + QSize(2 * 16, 2 * 6);
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool hitButton(const QPoint& place) const override { return rect().contains(place); }

    void draw(QPainter& painter, const ControlState& state) const override
    {
        const QRectF frame = QRectF(rect()).adjusted(1, 0, -1, 0);
        if (isChecked())
            drawCard(painter, frame, innerRadius, lift);
        else
            state.wash(painter, continuousRect(frame, innerRadius));
        if (state.hasFocus)
            painter.strokePath(continuousRect(frame.adjusted(1, 1, -1, -1), innerRadius - 1),
                               QPen(theme::focus, 2));
        painter.setPen(theme::faded(isChecked() ? theme::accentDeep : theme::text,
                                    state.isEnabled ? 1 : disabledOpacity));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine | Qt::TextShowMnemonic, text());
    }
};

} // namespace

SegmentedPicker::SegmentedPicker(const QString& name, const QStringList& titles, QWidget* parent)
    : QWidget(parent), m_segments(new QButtonGroup(this))
{
    setAccessibleName(name);
    auto* row = makeRow(this, {inset, inset, inset, inset}, 0);
    for (const QString& title : titles) {
        auto* segment = new Segment(title, this);
        segment->setFocusPolicy(Qt::ClickFocus);
        m_segments->addButton(segment, row->count());
        row->addWidget(segment, 1);
    }
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    // The Tab key goes to what is chosen. Groups see to that only once one of them has had the keyboard.
    connect(m_segments, &QButtonGroup::idToggled, this, [this](int position, bool chosen) {
        m_segments->button(position)->setFocusPolicy(chosen ? Qt::StrongFocus : Qt::ClickFocus);
        if (chosen)
            emit currentChanged(position);
    });
    setCurrent(0);
}

int SegmentedPicker::current() const
{
    return m_segments->checkedId();
}

void SegmentedPicker::setCurrent(int position)
{
    if (QAbstractButton* segment = m_segments->button(position))
        segment->setChecked(true);
}

void SegmentedPicker::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(continuousRect(rect(), outerRadius), theme::track);
}

} // namespace folvane
