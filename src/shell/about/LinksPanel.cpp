#include "shell/about/LinksPanel.h"

#include "controls/LinkButton.h"
#include "shell/about/aboutPanel.h"
#include "viewParts/openLink.h"

#include <QVBoxLayout>

namespace folvane {

LinksPanel::LinksPanel(AppModel& model, const QString& title, const QList<Link>& links, QWidget* parent)
    : Panel(aboutPanelPadding, parent)
{
    addTitle(*this, title);
    for (const Link& link : links) {
        auto* row = new LinkButton(link.title, this);
        row->setSymbol(link.icon);
        row->setToolTip(link.address.toDisplayString());
        connect(row, &LinkButton::clicked, this,
                [&model, address = link.address] { openLink(model, address); });
        content().addWidget(row, 0, Qt::AlignLeft);
    }
}

} // namespace folvane
