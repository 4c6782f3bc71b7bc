#pragma once

#include "tour/Tour.h"

namespace folvane {

// In the files of steps/.
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
inline constexpr TourStep tourSteps[] = {
    {"home", showHome},           {"documents", showDocuments}, {"browsing", showBrowsing},
    {"selecting", showSelecting}, {"dragging", showDragging},   {"menus", showMenus},
    {"passwords", showPasswords}, {"saving", showSaving},       {"compressing", showCompressing},
    {"merging", showMerging},     {"splitting", showSplitting}, {"protecting", showProtecting},
    {"exporting", showExporting}, {"alerts", showAlerts},       {"long names", showLongNames},
    {"file list", showFileList},  {"sizes", showSizes},         {"given files", showGivenFiles}};

} // namespace folvane
