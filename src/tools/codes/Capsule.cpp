#include "tools/codes/Capsule.h"

#include "controls/appearance.h"
#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"

#include <QPainter>

namespace folvane {

Capsule::Capsule(const QString& text, QWidget* parent)
    : TextLabel(text, interfaceFont(11, Weight::Medium), theme::secondaryTextOnTint, parent)
{
    setContentsMargins(8, 3, 8, 3);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Capsule::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(continuousRect(rect(), height() / 2.0), theme::chrome);
    painter.end();
    TextLabel::paintEvent(event);
}

} // namespace folvane
