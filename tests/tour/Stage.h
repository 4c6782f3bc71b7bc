#pragma once

#include "documents/AppModel.h"
#include "engine/PDFEngine.h"
#include "shell/DocumentView.h"
#include "shell/RootView.h"
#include "shell/pageGrid/PageGrid.h"
#include "support/ManualClock.h"
#include "support/MemoryPreferences.h"
#include "support/ScriptedPanels.h"
#include "support/ScriptedWorkspace.h"
#include "tour/Hand.h"

#include <QTemporaryDir>

namespace folvane {

/// The real window over the real model and engine, with a hand at it. Only the panels, the desktop, the preferences and the time are
/// stand-ins: nothing of the person at this machine is touched, and a toast stays until the tour lets it go.
struct Stage {
    Stage();

    PageGrid& grid() { return window.documentView().grid(); }
    /// The middle of the page, on the screen.
    QPoint pagePoint(int row);
    /// Where files to merge are taken hold of, so many rows below the top of the first, on the screen.
    QPoint mergePoint(double rows);
    /// A place for a file; all are gone after the play.
    QString path(const QString& name) const { return folder.filePath(name); }

    PDFEngine engine;
    ScriptedPanels panels;
    MemoryPreferences preferences;
    ScriptedWorkspace workspace;
    ManualClock clock;
    AppModel model{Services{engine, panels, preferences, workspace, clock}};
    RootView window{model};
    QTemporaryDir folder;
    Hand hand{window};
};

/// The positions of the selected pages, from 0.
QList<int> selectedRows(const OpenFile& file);

/// The pages as their places in their files, from 0.
QList<int> pageOrder(const OpenFile& file);

/// Gives the process a home of its own below `folder`, and a large screen when no other platform is asked for. Before
/// there is an application.
void prepareEnvironment(const QString& folder);

/// Names, fonts and looks as the program has them. After there is an application.
void prepareApplication();

} // namespace folvane
