#include "tools/stamps/openNewStampSheet.h"

#include "tools/stamps/NewStampSheet.h"

#include <QApplication>

namespace folvane {

// Drops reach the window under a dialog, and keys the view under the overlay of a job.
void openNewStampSheet(AppModel& model, const StampSource& source, QWidget& view, UseStamp use)
{
    if (QApplication::activeModalWidget() || model.busy.value())
        return;
    auto* sheet = new NewStampSheet(model, source, view.window());
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    if (use)
        QObject::connect(sheet, &NewStampSheet::saved, &view, std::move(use));
    sheet->open();
}

} // namespace folvane
