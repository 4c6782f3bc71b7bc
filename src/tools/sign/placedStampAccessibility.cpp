#include "tools/sign/placedStampAccessibility.h"

#include "tools/sign/PlacedStamp.h"

#include <QAccessibleWidget>

namespace folvane {

namespace {

class StampOnPage : public QAccessibleWidget {
public:
    explicit StampOnPage(PlacedStamp* stamp) : QAccessibleWidget(stamp, QAccessible::Graphic), m_stamp(stamp)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = true;
        state.selected = m_stamp->isSelected();
        return state;
    }

private:
    PlacedStamp* m_stamp;
};

QAccessibleInterface* interfaceFor(const QString&, QObject* object)
{
    auto* stamp = qobject_cast<PlacedStamp*>(object);
    return stamp ? new StampOnPage(stamp) : nullptr;
}

} // namespace

void installPlacedStampAccessibility()
{
    [[maybe_unused]] static const bool once = (QAccessible::installFactory(interfaceFor), true);
}

} // namespace folvane
