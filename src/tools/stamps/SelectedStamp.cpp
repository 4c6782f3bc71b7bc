#include "tools/stamps/SelectedStamp.h"

#include "controls/Button.h"
#include "controls/LinkButton.h"
#include "controls/TextLabel.h"
#include "controls/appearance.h"
#include "controls/layouts.h"
#include "controls/sliders/NumberSlider.h"
#include "controls/style/Theme.h"
#include "controls/texts/ElidedLabel.h"

#include <QPainter>
#include <QSignalBlocker>

#include <cmath>

namespace folvane {

namespace {

constexpr int padding = 16;
constexpr int spacing = 10;
constexpr int angleWidth = 38;
constexpr double sameAngle = 0.01; // degrees
const QString degreeSign = QStringLiteral("°");

} // namespace

SelectedStamp::SelectedStamp(AppModel& model, QWidget* parent)
    : QWidget(parent), m_model(model), m_name(new ElidedLabel(this))
{
    m_name->setFont(interfaceFont(13, Weight::SemiBold));
    auto* addToAll = new Button(Button::Kind::Secondary, tr("Add to All Pages"), this);
    addToAll->setSymbol(Icon::Copies);
    addToAll->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto* remove = new LinkButton(tr("Remove from Page"), this);
    remove->setSymbol(Icon::Delete);
    remove->setColor(theme::danger);
    auto* column = makeColumn(this, QMargins() + padding, spacing);
    column->addWidget(m_name);
    column->addLayout(makeAngle());
    column->addWidget(addToAll);
    column->addWidget(remove, 0, Qt::AlignHCenter);
    connect(m_slider, &NumberSlider::valueChanged, this, &SelectedStamp::turnTo);
    connect(addToAll, &Button::clicked, this, &SelectedStamp::addToAllRequested);
    connect(remove, &LinkButton::clicked, this, &SelectedStamp::removeRequested);
    m_watches.keep([this] { refreshName(); }, m_model.stamps.stamps);
    setSelected(std::nullopt);
}

QLayout* SelectedStamp::makeAngle()
{
    m_slider = new NumberSlider(tr("Angle"), -180, 180, degreeSign, this);
    m_angle = new TextLabel(QString(), interfaceFont(12), theme::secondaryText, this);
    m_angle->setFixedWidth(angleWidth);
    m_angle->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* row = makeRow(nullptr, {}, 8);
    row->addWidget(new TextLabel(tr("Angle"), interfaceFont(12), theme::text, this));
    row->addWidget(m_slider, 1);
    row->addWidget(m_angle);
    return row;
}

void SelectedStamp::setSelected(const std::optional<StampPlacement>& placement)
{
    m_selected = placement;
    setVisible(placement.has_value());
    refreshName();
    const double angle = placement ? placement->rotation : 0;
    const QSignalBlocker nobodyTurns(m_slider);
    m_slider->setValue(
        qRound(angle)); // as near as it goes: after turns of the page an angle may be above 180
    showAngle(angle);
}

void SelectedStamp::refreshName()
{
    const auto record = m_selected ? m_model.stamps.record(m_selected->stampID) : std::nullopt;
    m_name->setText(record ? record->name : QString());
    m_name->setVisible(record.has_value());
}

void SelectedStamp::showAngle(double degrees)
{
    m_angle->setText(QString::number(qRound(degrees)) + degreeSign);
}

void SelectedStamp::turnTo(int degrees)
{
    showAngle(degrees);
    if (m_selected && std::abs(degrees - m_selected->rotation) > sameAngle)
        emit rotateRequested(degrees);
}

void SelectedStamp::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(0, 0, width(), 1, theme::hairline);
}

} // namespace folvane
