#pragma once

#include "controls/Watches.h"

#include "documents/AppModel.h"

#include <QWidget>

namespace folvane {

class BarIcon;
class FileList;
class SidebarRow;

/// The list of places and open documents beside the main area.
class SidebarView : public QWidget {
    Q_OBJECT

public:
    explicit SidebarView(AppModel& model, QWidget* parent = nullptr);

signals:
    /// A row has been pressed, and what it leads to is shown.
    void chosen();

private:
    QWidget* makeList();
    void go(const Destination& destination);
    void markCurrent();

    AppModel& m_model;
    SidebarRow* m_home;
    FileList* m_files;
    SidebarRow* m_open;
    SidebarRow* m_merge;
    SidebarRow* m_stamps;
    SidebarRow* m_codes;
    BarIcon* m_support;
    BarIcon* m_about;
    Watches m_watches;
};

} // namespace folvane
