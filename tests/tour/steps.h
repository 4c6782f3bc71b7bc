#pragma once

#include "tour/Tour.h"

#include <array>

namespace folvane {

// Each in the file of its name in steps/.
void showHome(Tour& tour);
void showDocuments(Tour& tour);
void showBrowsing(Tour& tour);
void showSelecting(Tour& tour);
void showDragging(Tour& tour);
void showMenus(Tour& tour);
void showPasswords(Tour& tour);
void showSaving(Tour& tour);
void showCompressing(Tour& tour);
void showMerging(Tour& tour);
void showSplitting(Tour& tour);
void showProtecting(Tour& tour);
void showExporting(Tour& tour);
void showAlerts(Tour& tour);
void showLongNames(Tour& tour);
void showFileList(Tour& tour);
void showSizes(Tour& tour);
void showGivenFiles(Tour& tour);

/// The walk, in its order.
inline constexpr std::array tourSteps{
    TourStep{"home", showHome},
    TourStep{"documents", showDocuments},
    TourStep{"browsing", showBrowsing},
    TourStep{"selecting", showSelecting},
    TourStep{"dragging", showDragging},
    TourStep{"menus", showMenus},
    TourStep{"passwords", showPasswords},
    TourStep{"saving", showSaving},
    TourStep{"compressing", showCompressing},
    TourStep{"merging", showMerging},
    TourStep{"splitting", showSplitting},
    TourStep{"protecting", showProtecting},
    TourStep{"exporting", showExporting},
    TourStep{"alerts", showAlerts},
    TourStep{"long names", showLongNames},
    TourStep{"file list", showFileList},
    TourStep{"sizes", showSizes},
    TourStep{"given files", showGivenFiles},
};

} // namespace folvane
