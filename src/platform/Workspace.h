#pragma once

#include <QCoro/QCoroTask>

#include <QList>
#include <QUrl>

namespace folvane {

/// What the program asks of the desktop around it.
class Workspace {
public:
    virtual ~Workspace();

    /// Opens the link in the program that the system has for it. False when there is none.
    virtual bool openLink(QUrl link) = 0;
    /// Shows the file in the file manager.
    virtual QCoro::Task<> reveal(QUrl file) = 0;
};

/// The desktop that runs the program.
class DesktopWorkspace final : public Workspace {
public:
    bool openLink(QUrl link) override;
    QCoro::Task<> reveal(QUrl file) override;
};

/// Stands in for the desktop in tests and tools: keeps what it was asked.
class ScriptedWorkspace final : public Workspace {
public:
    bool opensLinks = true; ///< the answer to openLink()
    QList<QUrl> openedLinks;
    QList<QUrl> revealed;

    bool openLink(QUrl link) override;
    QCoro::Task<> reveal(QUrl file) override;
};

} // namespace folvane
