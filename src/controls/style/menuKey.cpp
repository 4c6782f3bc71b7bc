#include "controls/style/menuKey.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>

namespace folvane {

namespace {

bool isShiftF10(const QEvent& event)
{
    return event.type() == QEvent::KeyPress
           && static_cast<const QKeyEvent&>(event).keyCombination() == (Qt::SHIFT | Qt::Key_F10);
}

class MenuKeyFilter : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* widget = qobject_cast<QWidget*>(watched);
        if (!widget || !widget->hasFocus() || !isShiftF10(*event))
            return false;
        const QPoint place = widget->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
        QContextMenuEvent wish(QContextMenuEvent::Keyboard, place, widget->mapToGlobal(place));
        QCoreApplication::sendEvent(widget, &wish);
        return true;
    }
};

} // namespace

void letShiftF10OpenMenus(QObject& application)
{
    application.installEventFilter(new MenuKeyFilter(&application));
}

} // namespace folvane
