#include "shell/sidebar/SidebarView.h"
#include "tour/steps.h"

#include <QApplication>
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
    Tour::check(!tour.hand().finds("Home"), "a hidden sidebar has no rows");
    tour.openMenu("View");
    tour.choose("Show Sidebar");
    Tour::check(tour.hand().finds("Home"), "the sidebar comes back");
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

void showLongNames(Tour& tour)
{
    const QString longName =
        "Minutes of the extraordinary meeting of the committee for the copper harbour and "
        "its lanterns, with all appendices and a letter from the north (final, corrected)";
    tour.openSample(QString(180, u'm') + ".pdf", 2);
    tour.openSample(longName + ".pdf", 12);
    tour.press("Rotate Right");
    tour.select({0, 1});
    tour.picture("long-name");

    tour.save(longName + " - copy.pdf", [&tour] { tour.press("Save As…"); });
    tour.picture("long-name-toast");
    tour.letToastGo();

    tour.turn("Rotate Right");
    tour.model().requestClose(tour.shown());
    tour.picture("long-name-closing-question");
    tour.press("Cancel");

    tour.askForPassword(makeLocked(tour.path("Locked " + longName + ".pdf"), "x"));
    tour.picture("long-name-locked");
    tour.unlock("x");
    for (const char* tool : {"Compress", "Password"}) {
        tour.press(tool, "long-name-" + QString(tool).toLower());
        tour.keys({Qt::Key_Escape});
    }
    tour.press("Merge PDFs");
    tour.press("Add", "long-name-menu");
    tour.keys({Qt::Key_Escape});
}

void showFileList(Tour& tour)
{
    QList<QUrl> files;
    for (int number = 1; number <= 24; ++number)
        files.append(tour.sample(QStringLiteral("Report %1.pdf").arg(number), number));
    tour.open(files);
    tour.picture("many-files");

    tour.hand().key(Qt::Key_PageDown, Qt::ControlModifier);
    tour.turn("Rotate Right");
    while (QApplication::focusWidget()->accessibleName() != "Report 1, 1 pages, Not saved")
        tour.keys({Qt::Key_Tab});
    tour.keys({Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Down}, "many-files-by-keyboard");
    tour.keys({Qt::Key_Return});
    Tour::check(tour.shown()->name == "Report 5", "Return shows the document that the arrows led to");
}

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
