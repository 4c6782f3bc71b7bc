#include "shell/RootView.h"
#include "shell/sidebar/SidebarView.h"
#include "tour/sampleFiles.h"
#include "tour/steps.h"

#include <QSplitter>

namespace folvane {

namespace {

constexpr QSize large{1920, 1080};

void resize(Tour& tour, const QSize& size)
{
    tour.window().resize(size);
    tour.waitUntilShown(QStringLiteral("The resizing of the window"),
                        [&tour, size] { return tour.window().size() == size; });
}

QSize smallest(Tour& tour)
{
    return tour.window().minimumSize();
}

/// The least room that the bar over a document gets.
void showNarrowest(Tour& tour)
{
    resize(tour, smallest(tour));
    const auto* sidebar = tour.window().findChild<SidebarView*>();
    tour.window().findChild<QSplitter*>()->setSizes(
        {sidebar->maximumWidth(), tour.window().width() - sidebar->maximumWidth()});
    tour.picture(QStringLiteral("narrowest-document"));
    tour.press(QStringLiteral("More"));
    tour.picture(QStringLiteral("narrowest-menu-more"));
    tour.hand().key(Qt::Key_Escape);
    tour.press(QStringLiteral("Compress"));
    tour.picture(QStringLiteral("narrowest-compress"));
    tour.hand().key(Qt::Key_Escape);
    tour.press(QStringLiteral("Merge PDFs"));
    tour.picture(QStringLiteral("narrowest-merge-empty"));
}

/// The sidebar goes and comes back by the View menu.
void hideSidebar(Tour& tour)
{
    resize(tour, smallest(tour));
    tour.openMenu(QStringLiteral("View"));
    tour.choose(QStringLiteral("Hide Sidebar"));
    tour.picture(QStringLiteral("sidebar-hidden"));
    Tour::check(!tour.has(QStringLiteral("Home")), QStringLiteral("a hidden sidebar has no rows"));
    tour.openMenu(QStringLiteral("View"));
    tour.choose(QStringLiteral("Show Sidebar"));
    Tour::check(tour.has(QStringLiteral("Home")), QStringLiteral("the sidebar comes back"));
}

void showAt(Tour& tour, const QSize& size)
{
    resize(tour, size);
    const QString suffix = QStringLiteral("-%1x%2").arg(size.width()).arg(size.height());
    tour.press(QStringLiteral("Home"));
    tour.picture(QStringLiteral("home") + suffix);
    tour.model().destination = Destination::file(tour.model().files.value().last()->id);
    tour.picture(QStringLiteral("document") + suffix);
    tour.model().errorMessage = QStringLiteral("“Broken.pdf” can't be read. It may be damaged.");
    tour.picture(QStringLiteral("error") + suffix);
    tour.press(QStringLiteral("OK"));
}

} // namespace

void showSizes(Tour& tour)
{
    for (int number = 1; number <= 9; ++number)
        tour.open({tour.sample(QStringLiteral("Volume %1.pdf").arg(number), 10 * number, Paper::Mixed)});
    showAt(tour, smallest(tour));
    showAt(tour, large);
    hideSidebar(tour);
    showNarrowest(tour);
}

} // namespace folvane
