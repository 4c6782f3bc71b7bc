#pragma once

#include "controls/sheets/SheetFrame.h"
#include "controls/style/Theme.h"

namespace folvane {

/// What the sheets over a document share: a title in one line, texts below it, Cancel and the button that does it.
class ToolSheet : public SheetFrame {
    Q_OBJECT

public:
    ToolSheet(Icon icon, const QString& title, QWidget* parent, int width = 442);

protected:
    /// A text that wraps, at the end of the content.
    QLabel* addText(const QString& text, double pixels = 13, const QColor& color = theme::secondaryText);
    /// Cancel, which the Escape key presses, and this one, which the Return key presses.
    Button* addButtons(const QString& action);
};

} // namespace folvane
