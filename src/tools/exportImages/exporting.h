#pragma once

#include "documents/AppModel.h"

namespace folvane {

class Preferences;

/// What exported pictures are like. Kept in the preferences.
struct ExportSettings {
    bool jpeg = false; ///< else PNG
    int dpi = 200;     ///< 100, 200 or 300

    bool operator==(const ExportSettings&) const = default;

    static ExportSettings read(const Preferences& preferences);
    void write(Preferences& preferences) const;
};

/// Asks for a folder and writes the selected pages there (without a selection all), as they are now, named like
/// "Report page 3": each by its position in the document.
QCoro::Task<> exportImages(AppModel& model, const OpenFile& file, const ExportSettings& settings);

} // namespace folvane
