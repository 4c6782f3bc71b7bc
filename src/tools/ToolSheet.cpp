#include "tools/ToolSheet.h"

#include "controls/TextLabel.h"
#include "controls/appearance.h"
#include "controls/layouts.h"
#include "controls/texts/breakableText.h"

namespace folvane {

ToolSheet::ToolSheet(Icon icon, const QString& title, QWidget* parent, int width)
    : SheetFrame(title, parent, width)
{
    setIcon(icon);
    setTitleLine(title);
}

QLabel* ToolSheet::addText(const QString& text, double pixels, const QColor& color)
{
    auto* label = new TextLabel(breakableText(text), interfaceFont(pixels), color, this);
    label->setWordWrap(true);
    content().addWidget(label);
    return label;
}

void ToolSheet::layOut(QWidget* line, QLabel* icon, QLabel* text)
{
    auto* row = makeRow(line, {}, 8);
    row->addWidget(icon, 0, Qt::AlignTop);
    row->addWidget(text, 1);
}

Button* ToolSheet::addButtons(const QString& action)
{
    Button* cancel = addButton(Button::Kind::Secondary, tr("Cancel"));
    Button* does = addButton(Button::Kind::Primary, action);
    cancel->setAutoDefault(false);
    does->setDefault(true);
    connect(cancel, &Button::clicked, this, &QDialog::reject);
    return does;
}

} // namespace folvane
