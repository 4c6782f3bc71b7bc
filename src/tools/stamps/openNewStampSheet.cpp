#include "tools/stamps/openNewStampSheet.h"

#include "tools/stamps/NewStampSheet.h"

#include <QApplication>

namespace folvane {

// A drop reaches the window even then.
void openNewStampSheet(AppModel& model, const StampSource& source, QWidget& view, UseStamp use)
{
    if (QApplication::activeModalWidget())
        return;
    auto* sheet = new NewStampSheet(model, source, view.window());
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    if (use)
        QObject::connect(sheet, &NewStampSheet::saved, &view, std::move(use));
    sheet->open();
}

} // namespace folvane
