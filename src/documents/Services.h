#pragma once

namespace folvane {

class Clock;
class PDFEngine;
class Panels;
class Preferences;
class Workspace;

/// What the model needs from outside; all must outlive it.
struct Services {
    PDFEngine& engine;
    Panels& panels;
    Preferences& preferences;
    Workspace& workspace;
    Clock& clock;
};

} // namespace folvane
