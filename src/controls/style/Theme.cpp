#include "controls/style/Theme.h"

namespace folvane::theme {

QColor faded(QColor color, double opacity)
{
    color.setAlphaF(color.alphaF() * static_cast<float>(opacity));
    return color;
}

QLinearGradient accentGradient(const QRectF& frame)
{
    QLinearGradient gradient(frame.topLeft(), frame.bottomRight());
    gradient.setColorAt(0, accent);
    gradient.setColorAt(1, accentDeep);
    return gradient;
}

QPalette palette()
{
    QPalette palette(text, background);
    palette.setColor(QPalette::Window, background);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, surface);
    palette.setColor(QPalette::AlternateBase, background);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, surface);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, surface);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, surface);
    palette.setColor(QPalette::Link, accentDeep);
    palette.setColor(QPalette::LinkVisited, accentDeep);
    palette.setColor(QPalette::ToolTipBase, surface);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, placeholder);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, disabledText);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, disabledFill);
    return palette;
}

} // namespace folvane::theme
