#include "controls/SectionHeader.h"

#include "controls/appearance.h"
#include "controls/style/Theme.h"

namespace folvane {

SectionHeader::SectionHeader(const QString& text, QWidget* parent) : QLabel(text, parent)
{
    setTextFormat(Qt::PlainText);
    setFont(interfaceFont(11.5, Weight::SemiBold));
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, theme::secondaryText);
    setPalette(colours);
}

} // namespace folvane
