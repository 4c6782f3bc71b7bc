#include "tour/steps.h"

#include <QApplication>
#include <QMenuBar>

namespace folvane {

namespace {

void closeMenu(Tour& tour)
{
    while (QApplication::activePopupWidget())
        tour.keys({Qt::Key_Escape});
}

} // namespace

void showMenus(Tour& tour)
{
    const OpenFilePtr file = tour.openSample("Annual report.pdf", 12);
    for (const QAction* menu : tour.window().menuBar()->actions()) {
        const QString name = menu->text().remove(u'&');
        tour.openMenu(name);
        tour.picture("menu-" + name.toLower());
        closeMenu(tour);
    }
    tour.hand().key(Qt::Key_P, Qt::AltModifier);
    Tour::check(QApplication::activePopupWidget(), "Alt and a letter open a menu");
    tour.picture("menu-pages-by-keyboard");
    closeMenu(tour);
    tour.press("More", "menu-more");
    closeMenu(tour);

    tour.select({1, 2});
    tour.hand().click(tour.pagePoint(5), {}, Qt::RightButton);
    Tour::check(file->selection.value().size() == 2, "a right click selects nothing");
    tour.picture("menu-of-a-page");
    tour.choose("Rotate Left");
    tour.wait("The turning of the page of the menu", [&file] { return file->pages.value()[5].turn == 270; });
    Tour::check(file->pages.value()[1].turn == 0, "the menu of page 6 turns page 6 alone");
}

} // namespace folvane
