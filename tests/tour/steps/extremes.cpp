#include "shell/sidebar/FileRow.h"
#include "shell/sidebar/SidebarView.h"
#include "tour/steps.h"

#include <QSplitter>

namespace folvane {

namespace {

/// The least room that the bar over a document gets: its tools have titles again when there is more.
void showNarrowest(Tour& tour)
{
    const int sidebar = tour.window.findChild<SidebarView*>()->maximumWidth();
    const QSize least = tour.window.minimumSize();
    for (const QSize& size : {least, QSize(1280, 780), least}) {
        tour.resize(size);
        tour.window.findChild<QSplitter*>()->setSizes({sidebar, size.width() - sidebar});
        const QSize tool = tour.hand.placeOf("Split").size();
        Tour::check((tool.width() > tool.height()) == (size != least),
                    "tools have titles where there is room");
        Tour::check(tour.window.geometry().contains(tour.hand.placeOf("Save As…")), "the bar is not cut off");
    }
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
    tour.resize(tour.window.minimumSize());
    tour.press("View");
    tour.press("Hide Sidebar", "sidebar-hidden");
    Tour::check(!tour.hand.finds("Home"), "a hidden sidebar has no rows");
    tour.press("View");
    tour.press("Show Sidebar");
    Tour::check(tour.hand.finds("Home"), "the sidebar comes back");
}

void showAt(Tour& tour, const QSize& size)
{
    tour.resize(size);
    const QString suffix = QStringLiteral("-%1x%2").arg(size.width()).arg(size.height());
    tour.press("Home", "home" + suffix);
    tour.model.destination = Destination::file(tour.model.files.value().last()->id);
    tour.picture("document" + suffix);
    tour.model.errorMessage = "“Broken.pdf” can't be read. It may be damaged.";
    tour.picture("error" + suffix);
    tour.press("OK");
}

QWidget* fileRow(Tour& tour, int number)
{
    return tour.window.findChildren<FileRow*>()[number - 1];
}

bool isInSight(const QWidget& row)
{
    return row.visibleRegion().boundingRect() == row.rect();
}

/// The list of 24 files is one stop of the Tab key, and walked by other keys.
void walkFiles(Tour& tour)
{
    tour.hand.tabTo("Home");
    for (const auto& [key, number] :
         {std::pair{Qt::Key_Tab, 5}, std::pair{Qt::Key_Up, 4}, std::pair{Qt::Key_Home, 1},
          std::pair{Qt::Key_Up, 1}, std::pair{Qt::Key_Down, 2}, std::pair{Qt::Key_Delete, 2},
          std::pair{Qt::Key_End, 24}, std::pair{Qt::Key_Down, 24}}) {
        tour.keys({key});
        const QWidget* row = fileRow(tour, number);
        Tour::check(row->hasFocus() && isInSight(*row), QStringLiteral("keys lead to file %1").arg(number));
    }
    Tour::check(tour.model.files.value().size() == 24, "Delete closes nothing");
    tour.keys({Qt::Key_Tab, Qt::Key_Backtab});
    Tour::check(fileRow(tour, 24)->hasFocus(), "Tab leaves the list at once, and comes back where it was");
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
    tour.model.requestClose(currentFile(tour.model));
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
    Tour::check(isInSight(*fileRow(tour, 24)), "the last file is in sight");

    tour.hand.key(Qt::Key_PageDown, Qt::ControlModifier);
    tour.turn("Rotate Right");
    tour.hand.tabTo("Report 1, 1 pages, Not saved");
    tour.keys({Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Down}, "many-files-by-keyboard");
    tour.keys({Qt::Key_Return});
    Tour::check(currentFile(tour.model)->name == "Report 5",
                "Return shows the document that the arrows led to");
    walkFiles(tour);
}

void showSizes(Tour& tour)
{
    for (int number = 1; number <= 9; ++number)
        tour.openSample(QStringLiteral("Volume %1.pdf").arg(number), 10 * number, Paper::Mixed);
    showAt(tour, tour.window.minimumSize());
    showAt(tour, {1920, 1080});
    hideSidebar(tour);
    showNarrowest(tour);
}

} // namespace folvane
