#include "tour/steps.h"

namespace folvane {

namespace {

/// The positions of the selected pages, from 0.
QList<int> selectedRows(const OpenFile& file)
{
    QList<int> rows;
    const std::vector<PageItem>& pages = file.pages.value();
    for (size_t row = 0; row < pages.size(); ++row)
        if (file.selection.value().contains(pages[row].id))
            rows.append(int(row));
    return rows;
}

} // namespace

void showSelecting(Tour& tour)
{
    const OpenFilePtr file = tour.openSample("Annual report.pdf", 12, Paper::Mixed);
    Hand& hand = tour.hand();
    hand.click(tour.pagePoint(1));
    hand.click(tour.pagePoint(3), Qt::ShiftModifier);
    hand.click(tour.pagePoint(5), Qt::ControlModifier);
    Tour::check(selectedRows(*file) == QList{1, 2, 3, 5}, "clicks select pages 2 to 4 and 6");
    tour.picture("selection");

    tour.press("Rotate Right");
    tour.wait("The turning of the selected pages", [&file] { return file->pages.value()[5].turn == 90; });
    Tour::check(file->pages.value()[4].turn == 0, "a page that is not selected does not turn");
    tour.picture("selection-turned");

    tour.press("Delete Pages");
    Tour::check(file->pages.value().size() == 8, "the four selected pages are deleted");
    hand.key(Qt::Key_A, Qt::ControlModifier);
    Tour::check(selectedRows(*file).size() == 8, "Ctrl+A selects all pages");
    tour.picture("selection-of-all-after-deleting");

    hand.click(tour.pagePoint(0));
    hand.key(Qt::Key_Escape);
    Tour::check(selectedRows(*file).isEmpty(), "Escape deselects all");
    hand.key(Qt::Key_Right);
    hand.key(Qt::Key_Right, Qt::ShiftModifier);
    Tour::check(selectedRows(*file) == QList{1, 2}, "arrow keys select pages 2 and 3");
    tour.picture("selection-by-keyboard");
}

} // namespace folvane
