#include "tour/Stage.h"

#include "config.h"
#include "controls/appearance.h"
#include "pictures/pictures.h"
#include "platform/files/SourceFile.h"
#include "platform/files/writeFile.h"
#include "platform/texts/translations.h"
#include "tools/merge/MergeList.h"
#include "tools/merge/MergeView.h"
#include "tools/merge/mergeRow.h"

#include <QApplication>
#include <QFile>
#include <QUrl>

namespace folvane {

namespace {

// A screen of 3840 x 2160 pixels: at 200 % there is room for a window of 1920 x 1080.
constexpr const char* screens =
    R"({"windowFrameMargins": false, "screens": [{"name": "screen", "x": 0, "y": 0,
    "width": 3840, "height": 2160, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";

} // namespace

// A request to the user would come over what the steps show.
Stage::Stage()
{
    preferences.setValue("support.offeredAfterFirstResult", true);
    preferences.setValue("friend.state", "done");
    window.move(0, 0);
    window.show();
}

QPoint Stage::pagePoint(int row)
{
    return grid().viewport()->mapToGlobal(grid().visualRect(grid().model()->index(row, 0)).center());
}

QPoint Stage::mergePoint(double rows)
{
    const MergeList& list = window.mergeView().list();
    const QRect first = list.visualRect(list.model()->index(0, 0));
    return list.viewport()->mapToGlobal(
        QPoint(gripOf(first).center().x(), first.top() + qRound(rows * mergeRowHeight)));
}

QList<int> selectedRows(const OpenFile& file)
{
    QList<int> rows;
    const std::vector<PageItem>& pages = file.pages.value();
    for (size_t row = 0; row < pages.size(); ++row)
        if (file.selection.value().contains(pages[row].id))
            rows.append(int(row));
    return rows;
}

QList<int> pageOrder(const OpenFile& file)
{
    QList<int> places;
    for (const PageItem& page : file.pages.value())
        places.append(page.source.index);
    return places;
}

void prepareEnvironment(const QString& folder)
{
    for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
        qputenv(name, QFile::encodeName(folder + u'/' + QLatin1String(name)));
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder));
    if (qEnvironmentVariable("QT_QPA_PLATFORM", "offscreen") != "offscreen")
        return;
    const QString file = folder + "/screens.json";
    writeFile(QUrl::fromLocalFile(file), screens);
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(file));
}

void prepareApplication()
{
    QCoreApplication::setOrganizationName(config::makerName.toString());
    QCoreApplication::setApplicationName(config::appName.toString());
    installTranslations();
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setCursorFlashTime(0); // pictures do not depend on the moment
    raiseDescriptorLimit();
    preparePictureDecoding();
    applyAppearance(*qApp);
}

} // namespace folvane
