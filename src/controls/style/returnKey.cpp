#include "controls/style/returnKey.h"

#include <QAbstractButton>
#include <QKeyEvent>

namespace folvane {

namespace {

class ReturnKeyFilter : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress)
            return false;
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)
            return false;
        auto* button = qobject_cast<QAbstractButton*>(watched);
        if (!button || button->isCheckable() || !button->isEnabled()
            || key->modifiers() & ~Qt::KeypadModifier)
            return false;
        if (!key->isAutoRepeat())
            button->click();
        return true;
    }
};

} // namespace

void letReturnPressButtons(QObject& application)
{
    application.installEventFilter(new ReturnKeyFilter(&application));
}

} // namespace folvane
