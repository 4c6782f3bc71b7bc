#pragma once

#include "controls/Watches.h"

#include "documents/AppModel.h"

#include <QObject>

class QAction;
class QMenu;
class QMenuBar;

namespace folvane {

/// The commands on the window and what it shows: the View and Window menus.
class WindowCommands : public QObject {
    Q_OBJECT

public:
    WindowCommands(AppModel& model, QWidget* window, QMenuBar* bar);

    void setSidebarShown(bool shown);

signals:
    void sidebarToggled();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fillViewMenu(QMenu* menu);
    void fillWindowMenu(QMenu* menu);
    void fillHelpMenu(QMenu* menu);
    void showNeighbour(qsizetype step);
    void showFullScreen(bool full);
    void refresh();

    AppModel& m_model;
    QWidget* m_window;
    QAction* m_sidebar = nullptr;
    QAction* m_fullScreen = nullptr;
    QAction* m_maximize = nullptr;
    QList<QAction*> m_neighbours;
    Watches m_watches;
};

} // namespace folvane
