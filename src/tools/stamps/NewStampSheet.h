#pragma once

#include "controls/Watches.h"
#include "controls/sheets/SheetFrame.h"
#include "documents/AppModel.h"
#include "tools/stamps/StampMaking.h"
#include "tools/stamps/StampSource.h"

namespace folvane {

class NoteBanner;
class StampPreview;

/// Makes a new signature or stamp for the library from a picture, which it shows without its paper before it is kept.
class NewStampSheet : public SheetFrame {
    Q_OBJECT

public:
    /// The model must outlive it.
    NewStampSheet(AppModel& model, StampSource source, QWidget* parent = nullptr);

signals:
    /// The library has it; the sheet closes now.
    void saved(folvane::StampRecord record);

private:
    QWidget* makeProgress();
    void addParts();
    void addButtons();
    void begin(const QUrl& file) { work(file); }
    void begin(const QByteArray& bytes) { work(bytes); }
    void begin(StampSource::Drawing) {}
    void begin(StampSource::Ready) {}
    void work(const StampMaking::Picture& picture);
    void refresh();
    void save();
    void finish(const StampRecord& record);

    AppModel& m_model;
    StampMaking m_making{m_model.stamps};
    QWidget* m_progress;
    StampPreview* m_preview;
    NoteBanner* m_error;
    Button* m_save;
    Watches m_watches;
};

} // namespace folvane
