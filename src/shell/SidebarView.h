#pragma once

#include "controls/Watches.h"

#include "documents/AppModel.h"

#include <QWidget>

class QVBoxLayout;

namespace folvane {

class FileRow;
class SidebarRow;

/// The list of places and open documents beside the main area.
class SidebarView : public QWidget {
    Q_OBJECT

public:
    explicit SidebarView(AppModel& model, QWidget* parent = nullptr);

private:
    void showFiles();
    void markCurrent();

    AppModel& m_model;
    SidebarRow* m_home;
    SidebarRow* m_open;
    SidebarRow* m_merge;
    QVBoxLayout* m_rows;
    QList<FileRow*> m_files;
    Watches m_watches;
};

} // namespace folvane
