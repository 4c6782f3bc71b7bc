#include "controls/paletteColors.h"

#include <QWidget>

namespace folvane {

namespace {

void setColor(QWidget& widget, QPalette::ColorRole role, const QColor& color)
{
    QPalette colors = widget.palette();
    colors.setColor(role, color);
    widget.setPalette(colors);
}

} // namespace

void setGround(QWidget& widget, const QColor& color)
{
    setColor(widget, QPalette::Window, color);
    widget.setAutoFillBackground(true);
}

void setTextColor(QWidget& label, const QColor& color)
{
    setColor(label, QPalette::WindowText, color);
}

} // namespace folvane
