#include "controls/TextLabel.h"

#include "controls/paletteColors.h"

namespace folvane {

TextLabel::TextLabel(const QString& text, const QFont& font, const QColor& color, QWidget* parent)
    : QLabel(text, parent)
{
    setTextFormat(Qt::PlainText);
    setFont(font);
    setTextColor(*this, color);
}

} // namespace folvane
