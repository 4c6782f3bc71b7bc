#pragma once

#include "controls/Watches.h"

#include "documents/AppModel.h"

#include <QAction>
#include <QObject>

class QMenuBar;

namespace folvane {

/// The commands of the menu bar and their keys, enabled as the model allows.
class Commands : public QObject {
    Q_OBJECT

public:
    Commands(AppModel& model, QMenuBar* bar);

    QAction& saveAs() const { return *m_saveAs; }
    QAction& closeFile() const { return *m_closeFile; }

signals:
    void quitRequested();

private:
    void fillFileMenu(QMenuBar* bar);
    void fillPagesMenu(QMenuBar* bar);
    void watchFile();
    void refresh();

    AppModel& m_model;
    QAction* m_insert;
    QAction* m_saveAs;
    QAction* m_extract;
    QAction* m_closeFile;
    QList<QAction*> m_turns;
    QAction* m_delete;
    OpenFilePtr m_file; ///< that the commands act on
    Watches m_watches;
    Watches m_fileWatches;
};

} // namespace folvane
