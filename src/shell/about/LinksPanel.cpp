#include "shell/about/LinksPanel.h"

#include "controls/LinkButton.h"
#include "platform/desktop/Workspace.h"
#include "shell/about/aboutPanel.h"

#include <QVBoxLayout>

namespace folvane {

namespace {

constexpr int padding = 20;

} // namespace

LinksPanel::LinksPanel(Workspace& workspace, const QString& title, const QList<Link>& links, QWidget* parent)
    : Panel(padding, parent)
{
    addTitle(*this, title);
    for (const Link& link : links) {
        auto* row = new LinkButton(link.title, this);
        row->setSymbol(link.icon);
        row->setToolTip(link.address.toDisplayString());
        connect(row, &LinkButton::clicked, this,
                [&workspace, address = link.address] { workspace.openLink(address); });
        content().addWidget(row, 0, Qt::AlignLeft);
    }
}

} // namespace folvane
