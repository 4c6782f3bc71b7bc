#pragma once

#include "documents/currentFile.h"
#include "tour/Tour.h"

namespace folvane {

/// One part of the walk, with a window of its own.
using TourStep = void(Tour& tour);

// In the files of steps/.
TourStep showHome, showDocuments, showBrowsing, showSelecting, showDragging, showMenus, showPasswords,
    showSaving, showCompressing, showMerging, showSplitting, showProtecting, showExporting, showAlerts,
    showLongNames, showFileList, showMakingStamps, showStamps, showSizes, showSigning, showSigningSizes,
    showReadingCodes, showCodeCards, showOffers, showAbout;

} // namespace folvane
