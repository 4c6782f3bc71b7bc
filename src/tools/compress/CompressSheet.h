#pragma once

#include "controls/Watches.h"
#include "tools/ToolSheet.h"
#include "tools/compress/CompressMeasuring.h"

class QButtonGroup;
class QLayout;

namespace folvane {

class ChoiceRow;
class NoteBanner;
class StepSlider;

/// Lets a person pick how small a copy of a document should be. Each size is that of a finished PDF, which is what is
/// then saved.
class CompressSheet : public ToolSheet {
    Q_OBJECT

public:
    CompressSheet(AppModel& model, OpenFilePtr file, QWidget* parent = nullptr);

private:
    QLayout* makeRows();
    void addRow(QLayout& rows, Compression::Choice choice, const QString& title, const QString& detail);
    QWidget* makeLimit();
    QLayout* makeSlider(QWidget* limit);
    QWidget* makePicturesWarning(QWidget* limit);
    NoteBanner* addBanner(bool isError);
    ChoiceRow& row(Compression::Choice choice) const;

    void refresh();
    void refreshSizes();
    void refreshLimit();
    void refreshBanners();
    void save();

    AppModel& m_model;
    OpenFilePtr m_file;
    CompressMeasuring m_measuring;
    QButtonGroup* m_rows;
    QWidget* m_limit;
    StepSlider* m_slider;
    QWidget* m_pagesBecamePictures;
    QLabel* m_notReached;
    NoteBanner* m_error;
    NoteBanner* m_note;
    Button* m_save;
    Watches m_watches;
};

} // namespace folvane
