#include "tour/steps.h"

#include <QImage>

namespace folvane {

void showSplitting(Tour& tour)
{
    tour.openSample("Annual report.pdf", 12);
    tour.press("Split", "split");
    tour.type("1-3, 13", "split-ranges-invalid");
    tour.keys({Qt::Key_Backspace, Qt::Key_Backspace});
    tour.type("5, 6, 7, 8, 9, 10-12", "split-ranges");
    tour.press("Every few pages", "split-every");
    tour.press("Page by page", "split-each");
    tour.keys({Qt::Key_Escape});
    Tour::check(!tour.model.sheet.value(), "Escape takes the sheet away");

    tour.select({1, 2, 4});
    tour.press("Split", "split-selection");
    const QString folder = tour.writeInto("pieces", [&tour] { tour.press("Split…"); });
    Tour::check(checkedTexts(folder + "/Annual report 2-3.pdf") == QStringList{"Chapter 2", "Chapter 3"},
                "a piece has its pages");
    tour.picture("split-done");

    tour.openSample(QString(180, u'm') + ".pdf", 2);
    tour.press("Split", "split-long-name");
}

void showExporting(Tour& tour)
{
    tour.openSample("Annual report.pdf", 12);
    tour.press("More");
    tour.press("Export Pages as Images…", "export");
    tour.press("Screen (100 dpi)");
    tour.press("JPEG", "export-chosen");
    tour.keys({Qt::Key_Tab, Qt::Key_Right}, "export-by-keyboard");
    tour.keys({Qt::Key_Left, Qt::Key_Escape});

    tour.select({1, 4});
    tour.press("More");
    tour.press("Export Pages as Images…", "export-selection");
    const QString folder = tour.writeInto("pictures", [&tour] { tour.press("Export…"); });
    Tour::check(QImage(folder + "/Annual report page 5.jpg").size() == QSize(826, 1169),
                "the exported page has its size");
    tour.picture("export-done");
}

} // namespace folvane
