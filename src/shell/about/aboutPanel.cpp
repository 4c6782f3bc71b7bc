#include "shell/about/aboutPanel.h"

#include "controls/Button.h"
#include "controls/accessibility.h"
#include "controls/appearance.h"
#include "controls/containers/Panel.h"
#include "controls/layouts.h"
#include "controls/style/Theme.h"
#include "controls/texts/NoteLabel.h"

namespace folvane {

void addTitle(Panel& panel, const QString& title)
{
    auto* label = new TextLabel(title, interfaceFont(15, Weight::SemiBold), theme::text, &panel);
    setSpokenRole(*label, QAccessible::Heading);
    label->setAccessibleName(title);
    panel.setAccessibleName(title);
    panel.content().addWidget(label);
}

Panel* makeAboutPanel(const QString& title, const QString& text, Button* button, QWidget* page)
{
    auto* panel = new Panel(aboutPanelPadding, page);
    addTitle(*panel, title);
    panel->content().setSpacing(12);
    panel->content().addWidget(new NoteLabel(text, 13, panel));
    panel->content().addWidget(button, 0, Qt::AlignLeft);
    return panel;
}

} // namespace folvane
