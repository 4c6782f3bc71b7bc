#pragma once

#include "controls/Watches.h"
#include "controls/sheets/SheetFrame.h"
#include "documents/AppModel.h"
#include "tools/stamps/StampMaking.h"
#include "tools/stamps/StampSource.h"

namespace folvane {

class NoteBanner;
class StampPreview;

/// Makes a new signature or stamp for the library: of a picture or a drawing, which it shows without its paper before it is
/// kept, or of a ready word.
class NewStampSheet : public SheetFrame {
    Q_OBJECT

public:
    /// The model must outlive it.
    NewStampSheet(AppModel& model, StampSource source, QWidget* parent = nullptr);

signals:
    /// The library has it; the sheet closes now.
    void saved(folvane::StampRecord record);

private:
    void begin(const QUrl& file) { m_making.start(file); }
    void begin(const QByteArray& bytes) { m_making.start(bytes); }
    void begin(StampSource::Drawing);
    void begin(StampSource::Ready);
    void addOutcomes();
    QWidget* makeProgress();
    void addButtons();
    void refresh();
    void save();
    void finish(const StampRecord& record);

    AppModel& m_model;
    StampMaking m_making{m_model.stamps};
    QWidget* m_stage; ///< what is above the buttons: where a stamp is begun, then what became of it
    QWidget* m_progress;
    StampPreview* m_preview;
    NoteBanner* m_error;
    Button* m_cancel;
    Button* m_save;
    Watches m_watches;
};

} // namespace folvane
