#pragma once

#include "platform/desktop/Workspace.h"

#include <QList>

namespace folvane {

/// Stands in for the desktop: keeps what it was asked to show.
class ScriptedWorkspace final : public Workspace {
public:
    QList<QUrl> revealed;
    QList<QUrl> openedLinks;

    bool openLink(QUrl link) override
    {
        openedLinks.append(link);
        return true;
    }
    QCoro::Task<> reveal(QUrl file) override
    {
        revealed.append(file);
        co_return;
    }
};

} // namespace folvane
