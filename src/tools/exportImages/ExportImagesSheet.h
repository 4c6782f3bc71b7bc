#pragma once

#include "documents/AppModel.h"
#include "tools/ToolSheet.h"

namespace folvane {

class SegmentedPicker;

/// Writes pages out as pictures. What is chosen is kept for the next time.
class ExportImagesSheet : public ToolSheet {
    Q_OBJECT

public:
    ExportImagesSheet(AppModel& model, OpenFilePtr file, QWidget* parent = nullptr);

private:
    void addChoice(QWidget* choice);
    void showSettings();
    void keepSettings();
    void exportPages();

    AppModel& m_model;
    OpenFilePtr m_file;
    SegmentedPicker* m_format;
    SegmentedPicker* m_resolution;
};

} // namespace folvane
