#include "controls/accessibility.h"

#include "controls/BrandMark.h"
#include "controls/ControlGroup.h"
#include "controls/SectionHeader.h"
#include "controls/SegmentedPicker.h"
#include "controls/Spinner.h"
#include "controls/sliders/KnobSlider.h"

#include <QAccessibleWidget>
#include <QLabel>

namespace folvane {

namespace {

constexpr char roleProperty[] = "folvaneSpokenRole";

// Only for the eyes: screen readers leave out what is invisible.
class Decoration : public QAccessibleWidget {
public:
    explicit Decoration(QWidget* widget) : QAccessibleWidget(widget, QAccessible::Whitespace) {}

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.invisible = true;
        return state;
    }
};

class Heading : public QAccessibleWidget {
public:
    explicit Heading(QWidget* widget) : QAccessibleWidget(widget, QAccessible::Heading) {}

    QString text(QAccessible::Text kind) const override
    {
        const auto* label = qobject_cast<const QLabel*>(widget());
        return kind == QAccessible::Name && label ? label->text() : QAccessibleWidget::text(kind);
    }
};

// Its value is a number, for which it has words.
class Slider : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit Slider(KnobSlider* slider) : QAccessibleWidget(slider, QAccessible::Slider), m_slider(slider) {}

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? m_slider->valueText() : QAccessibleWidget::text(kind);
    }
    QVariant currentValue() const override { return m_slider->value(); }
    void setCurrentValue(const QVariant& value) override { m_slider->setValue(value.toInt()); }
    QVariant maximumValue() const override { return m_slider->maximum(); }
    QVariant minimumValue() const override { return m_slider->minimum(); }
    QVariant minimumStepSize() const override { return m_slider->singleStep(); }

private:
    KnobSlider* m_slider;
};

QAccessibleInterface* interfaceFor(const QString&, QObject* object)
{
    auto* widget = qobject_cast<QWidget*>(object);
    if (qobject_cast<BrandMark*>(widget)
        || qobject_cast<Spinner*>(widget)) // beside a spinner stands what it waits for
        return new Decoration(widget);
    if (const QVariant role = object->property(roleProperty); widget && role.isValid())
        return new QAccessibleWidget(widget, QAccessible::Role(role.toInt()));
    if (auto* slider = qobject_cast<KnobSlider*>(widget))
        return new Slider(slider);
    if (qobject_cast<SectionHeader*>(widget))
        return new Heading(widget);
    if (qobject_cast<ControlGroup*>(widget) || qobject_cast<SegmentedPicker*>(widget))
        return new QAccessibleWidget(widget, QAccessible::Grouping);
    return nullptr;
}

} // namespace

void installAccessibility()
{
    QAccessible::installFactory(interfaceFor);
}

void announce(QWidget& widget)
{
    QAccessibleEvent event(&widget, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void setSpokenRole(QWidget& widget, QAccessible::Role role)
{
    widget.setProperty(roleProperty, int(role));
}

} // namespace folvane
