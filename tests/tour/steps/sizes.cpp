#include "shell/sidebar/SidebarView.h"
#include "tour/steps.h"

#include <QSplitter>

namespace folvane {

namespace {

/// The least room that the bar over a document gets.
void showNarrowest(Tour& tour)
{
    tour.resize(tour.window().minimumSize());
    const int sidebar = tour.window().findChild<SidebarView*>()->maximumWidth();
    tour.window().findChild<QSplitter*>()->setSizes({sidebar, tour.window().width() - sidebar});
    tour.picture("narrowest-document");
    tour.press("More", "narrowest-menu-more");
    tour.keys({Qt::Key_Escape});
    tour.press("Compress", "narrowest-compress");
    tour.keys({Qt::Key_Escape});
    tour.press("Merge PDFs", "narrowest-merge-empty");
}

/// The sidebar goes and comes back by the View menu.
void hideSidebar(Tour& tour)
{
    tour.resize(tour.window().minimumSize());
    tour.openMenu("View");
    tour.choose("Hide Sidebar", "sidebar-hidden");
    Tour::check(!tour.has("Home"), "a hidden sidebar has no rows");
    tour.openMenu("View");
    tour.choose("Show Sidebar");
    Tour::check(tour.has("Home"), "the sidebar comes back");
}

void showAt(Tour& tour, const QSize& size)
{
    tour.resize(size);
    const QString suffix = QStringLiteral("-%1x%2").arg(size.width()).arg(size.height());
    tour.press("Home", "home" + suffix);
    tour.model().destination = Destination::file(tour.model().files.value().last()->id);
    tour.picture("document" + suffix);
    tour.model().errorMessage = "“Broken.pdf” can't be read. It may be damaged.";
    tour.picture("error" + suffix);
    tour.press("OK");
}

} // namespace

void showSizes(Tour& tour)
{
    for (int number = 1; number <= 9; ++number)
        tour.openSample(QStringLiteral("Volume %1.pdf").arg(number), 10 * number, Paper::Mixed);
    showAt(tour, tour.window().minimumSize());
    showAt(tour, {1920, 1080});
    hideSidebar(tour);
    showNarrowest(tour);
}

} // namespace folvane
