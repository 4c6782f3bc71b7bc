#pragma once

#include "controls/Watches.h"

#include "documents/AppModel.h"
#include "tools/ToolSheet.h"
#include "tools/split/SplitChoice.h"

class QLineEdit;
class QSpinBox;
class QStackedWidget;

namespace folvane {

class SegmentedPicker;

/// Cuts a document into several. Begins afresh each time, with the ranges of the selected pages.
class SplitSheet : public ToolSheet {
    Q_OBJECT

public:
    SplitSheet(AppModel& model, OpenFilePtr file, QWidget* parent = nullptr);

private:
    QWidget* makeRanges();
    QWidget* makeEvery();
    QWidget* makeEach();
    QWidget* makeSummary();
    int pageCount() const { return static_cast<int>(m_file->pages.value().size()); }
    SplitChoice choice() const;
    void showMode();
    void refresh();
    void showSummary(const SplitSummary& summary);
    void splitFile();

    AppModel& m_model;
    OpenFilePtr m_file;
    SegmentedPicker* m_mode;
    QStackedWidget* m_modes;
    QLineEdit* m_ranges;
    QLabel* m_rangesHint;
    QSpinBox* m_every;
    QLabel* m_everyText;
    QLabel* m_eachText;
    QWidget* m_summary;
    QLabel* m_summaryIcon;
    QLabel* m_summaryText;
    Button* m_split;
    Watches m_watches;
};

} // namespace folvane
