#pragma once

#include "documents/AppModel.h"
#include "engine/PDFEngine.h"
#include "shell/RootView.h"
#include "support/ManualClock.h"
#include "support/MemoryPreferences.h"
#include "support/ScriptedPanels.h"
#include "support/ScriptedWorkspace.h"

namespace folvane {

/// The real window over the real model and engine. Only the panels, the desktop, the preferences and the time are
/// stand-ins: nothing of the person at this machine is touched, and a toast stays until the tour lets it go.
struct Stage {
    Stage();

    PDFEngine engine;
    ScriptedPanels panels;
    MemoryPreferences preferences;
    ScriptedWorkspace workspace;
    ManualClock clock;
    AppModel model{Services{engine, panels, preferences, workspace, clock}};
    RootView window{model};
};

/// Gives the process a home of its own below `folder`, and a screen of its own when it has no display. Before there is
/// an application.
void prepareEnvironment(const QString& folder);

/// Names, fonts and looks as the program has them. After there is an application.
void prepareApplication();

} // namespace folvane
