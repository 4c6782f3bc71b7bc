#include "controls/texts/NoteLabel.h"

#include "controls/appearance.h"
#include "controls/style/Theme.h"

namespace folvane {

NoteLabel::NoteLabel(const QString& text, double pixels, QWidget* parent)
    : TextLabel(text, interfaceFont(pixels), theme::secondaryText, parent)
{
    setWordWrap(true);
}

} // namespace folvane
