#include "controls/SectionHeader.h"

#include "controls/appearance.h"
#include "controls/style/Theme.h"

namespace folvane {

SectionHeader::SectionHeader(const QString& text, QWidget* parent)
    : TextLabel(text, interfaceFont(11.5, Weight::SemiBold), theme::secondaryText, parent)
{
}

} // namespace folvane
