#pragma once

#include "controls/Watches.h"

#include "documents/AppModel.h"

#include <QObject>

class QAction;
class QMenu;
class QMenuBar;

namespace folvane {

/// The commands on files and pages: the File, Edit, Pages and Tools menus with their shortcuts. Those on pages act on the
/// document that the window shows.
class Commands : public QObject {
    Q_OBJECT

public:
    Commands(AppModel& model, QMenuBar* bar);

signals:
    void closeWindowRequested();
    void quitRequested();
    /// By so many places; negative is towards the front.
    void pagesMoveRequested(int steps);

private:
    void fillFileMenu(QMenu* menu);
    void fillEditMenu(QMenu* menu);
    void fillPagesMenu(QMenu* menu);
    void fillToolsMenu(QMenu* menu);
    void watchFile();
    void refresh();
    /// The document shows its grid, and no page for signing.
    bool showsGrid() const;
    int pageCount() const;
    void selectAll();

    AppModel& m_model;
    QAction* m_saveAs = nullptr;
    QAction* m_closeFile = nullptr;
    QAction* m_extract = nullptr;
    QList<QAction*> m_onFile;      ///< need a document
    QList<QAction*> m_onPages;     ///< need the grid of its pages
    QList<QAction*> m_onSelection; ///< need selected pages in it
    OpenFilePtr m_file;
    Watches m_watches;
    Watches m_fileWatches;
};

} // namespace folvane
