#pragma once

#include "platform/desktop/Panels.h"

#include <QCoreApplication>
#include <QPointer>
#include <QWidget>

namespace folvane {

/// The desktop's file panels, over the window. They give files of this machine only.
class QtPanels final : public Panels {
    Q_DECLARE_TR_FUNCTIONS(folvane::QtPanels)

public:
    /// Until it is set, panels stand alone.
    void setWindow(QWidget* window) { m_window = window; }

    QCoro::Task<std::optional<QUrl>> chooseSave(SavePanel panel) override;
    QCoro::Task<std::optional<QUrl>> chooseFolder(FolderPanel panel) override;
    QCoro::Task<QList<QUrl>> chooseOpen(OpenPanel panel) override;
    QCoro::Task<bool> confirmReplace(QUrl existing) override;

private:
    QPointer<QWidget> m_window;
};

} // namespace folvane
