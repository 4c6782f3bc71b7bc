#pragma once

#include "controls/sheets/SheetFrame.h"
#include "controls/style/Theme.h"

class QLabel;

namespace folvane {

/// What the sheets over a document share: a title in one line, texts below it, Cancel and the button that does it.
class ToolSheet : public SheetFrame {
    Q_OBJECT

public:
    ToolSheet(Icon icon, const QString& title, QWidget* parent, int width = 442);

protected:
    /// A text that wraps, at the end of the content.
    QLabel* addText(const QString& text, double pixels = 13, const QColor& color = theme::secondaryText);
    /// Fills `line` with the icon and, beside it, the text, which begin at one height.
    static void layOut(QWidget* line, QLabel* icon, QLabel* text);
    /// Cancel, which the Escape key presses, and this one, which the Return key presses.
    Button* addButtons(const QString& action);
};

} // namespace folvane
