#pragma once

#include "platform/desktop/Workspace.h"

#include <QList>

namespace folvane {

/// Stands in for the desktop: keeps what it was asked.
class ScriptedWorkspace final : public Workspace {
public:
    bool opensLinks = true; ///< the answer to openLink()
    QList<QUrl> openedLinks;
    QList<QUrl> revealed;

    bool openLink(QUrl link) override
    {
        openedLinks.append(link);
        return opensLinks;
    }
    QCoro::Task<> reveal(QUrl file) override
    {
        revealed.append(file);
        co_return;
    }
};

} // namespace folvane
