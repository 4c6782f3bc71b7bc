#include "controls/accessibility.h"

#include "controls/BrandMark.h"
#include "controls/ControlGroup.h"
#include "controls/SectionHeader.h"
#include "controls/SegmentedPicker.h"
#include "controls/Spinner.h"

#include <QAccessibleWidget>
#include <QLabel>

namespace folvane {

namespace {

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

QAccessibleInterface* interfaceFor(const QString&, QObject* object)
{
    auto* widget = qobject_cast<QWidget*>(object);
    if (qobject_cast<BrandMark*>(widget)
        || qobject_cast<Spinner*>(widget)) // beside a spinner stands what it waits for
        return new Decoration(widget);
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

} // namespace folvane
