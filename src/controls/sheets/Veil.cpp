#include "controls/sheets/Veil.h"

#include "controls/style/Theme.h"

#include <QEvent>
#include <QPainter>

namespace folvane {

Veil::Veil(QWidget* window) : QWidget(window)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    window->installEventFilter(this);
    hide();
}

// A window is told so once, however many dialogs keep it from its user and whatever becomes of them.
bool Veil::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::WindowBlocked:
        setGeometry(parentWidget()->rect());
        raise();
        show();
        break;
    case QEvent::WindowUnblocked: hide(); break;
    case QEvent::Resize: setGeometry(parentWidget()->rect()); break;
    default: break;
    }
    return QWidget::eventFilter(watched, event);
}

void Veil::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), theme::veil);
}

} // namespace folvane
