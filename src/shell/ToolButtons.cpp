#include "shell/ToolButtons.h"

#include "controls/Button.h"
#include "controls/style/mnemonics.h"

namespace folvane {

ToolButtons::ToolButtons(QWidget* bar) : m_bar(bar)
{
    setContentsMargins(0, 0, 0, 0);
    setSpacing(8);
}

Button* ToolButtons::add(Icon icon, const QString& title)
{
    auto* button = new Button(Button::Kind::Tool, literal(title), m_bar);
    button->setSymbol(icon);
    button->setToolTip(title);
    button->setAccessibleName(title); // from the text every & would be taken out
    addWidget(button);
    const int gap = m_buttons.isEmpty() ? 0 : spacing();
    const QLayoutItem* item = itemAt(count() - 1);
    m_widthWithTitles += gap + item->sizeHint().width();
    button->setIconOnly(true);
    m_widthOfIcons += gap + item->sizeHint().width();
    button->setIconOnly(false);
    m_buttons.append(button);
    return button;
}

void ToolButtons::fitInto(int width)
{
    for (Button* button : m_buttons)
        button->setIconOnly(m_widthWithTitles > width);
}

} // namespace folvane
