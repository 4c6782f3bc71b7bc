#include "shell/RootView.h"
#include "tour/sampleFiles.h"
#include "tour/steps.h"

#include <QApplication>
#include <QMenuBar>

namespace folvane {

namespace {

void closeMenu(Tour& tour)
{
    while (QApplication::activePopupWidget())
        tour.hand().key(Qt::Key_Escape);
}

void showMenuBar(Tour& tour)
{
    for (const QAction* menu : tour.window().menuBar()->actions()) {
        const QString name = menu->text().remove(u'&');
        tour.openMenu(name);
        tour.picture(QStringLiteral("menu-%1").arg(name.toLower()));
        closeMenu(tour);
    }
}

void showMnemonics(Tour& tour)
{
    tour.hand().key(Qt::Key_P, Qt::AltModifier);
    Tour::check(QApplication::activePopupWidget(), QStringLiteral("Alt and a letter open a menu"));
    tour.picture(QStringLiteral("menu-pages-by-keyboard"));
    closeMenu(tour);
}

} // namespace

void showMenus(Tour& tour)
{
    const OpenFilePtr file = tour.open({tour.sample(QStringLiteral("Annual report.pdf"), 12)});
    showMenuBar(tour);
    showMnemonics(tour);
    tour.press(QStringLiteral("More"));
    tour.picture(QStringLiteral("menu-more"));
    closeMenu(tour);

    tour.select({1, 2});
    tour.hand().click(tour.pagePoint(5), {}, Qt::RightButton);
    Tour::check(file->selection.value().size() == 2, QStringLiteral("a right click selects nothing"));
    tour.picture(QStringLiteral("menu-of-a-page"));
    tour.choose(QStringLiteral("Rotate Left"));
    tour.waitUntilShown(QStringLiteral("The turning of the page of the menu"),
                        [&file] { return file->pages.value()[5].turn == 270; });
    Tour::check(file->pages.value()[1].turn == 0, QStringLiteral("the menu of page 6 turns page 6 alone"));
}

} // namespace folvane
