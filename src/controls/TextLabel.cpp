#include "controls/TextLabel.h"

namespace folvane {

TextLabel::TextLabel(const QString& text, const QFont& font, const QColor& color, QWidget* parent)
    : QLabel(text, parent)
{
    setTextFormat(Qt::PlainText);
    setFont(font);
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, color);
    setPalette(colors);
}

} // namespace folvane
