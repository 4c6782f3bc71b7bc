#pragma once

#include <QCoro/QCoroTask>

#include <QDBusConnection>
#include <QUrl>

#include <optional>

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
    /// The bus on which the file manager is looked for; see sessionBus().
    explicit DesktopWorkspace(std::optional<QDBusConnection> bus = std::nullopt);

    bool openLink(QUrl link) override;
    /// Selects the file where the desktop can do that, else opens its folder. Never throws.
    QCoro::Task<> reveal(QUrl file) override;

private:
    std::optional<QDBusConnection> m_bus;
};

} // namespace folvane
