#include "config.h"
#include "controls/appearance.h"
#include "documents/AppModel.h"
#include "engine/PDFEngine.h"
#include "platform/Clock.h"
#include "platform/Preferences.h"
#include "platform/SourceFile.h"
#include "platform/Workspace.h"
#include "platform/pictures.h"
#include "platform/spawn.h"
#include "shell/CommandLine.h"
#include "shell/QtPanels.h"
#include "shell/RootView.h"
#include "shell/WindowPictures.h"

#include <QApplication>

#include <cstdio>

namespace {

using namespace folvane;

void nameApplication()
{
    QCoreApplication::setOrganizationName(config::makerName.toString());
    QCoreApplication::setApplicationName(config::appName.toString());
    QCoreApplication::setApplicationVersion(config::version.toString());
    QGuiApplication::setDesktopFileName(config::bundleIdentifier.toString());
}

/// Takes the pictures and ends the program, with 1 when they could not be taken.
QCoro::Task<> takePictures(WindowPictures* pictures, QList<QUrl> files)
{
    int result = 0;
    try {
        co_await pictures->take(files);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        result = 1;
    }
    QCoreApplication::exit(result);
}

int runWindow(const CommandLine& line)
{
    PDFEngine engine;
    QtPanels panels;
    SettingsPreferences preferences;
    DesktopWorkspace workspace;
    SystemClock clock;
    AppModel model(Services{engine, panels, preferences, workspace, clock});
    RootView window(model);
    panels.setWindow(&window);
    window.show();
    if (!line.picturesFolder) {
        spawn(model.open(line.files));
        return QApplication::exec();
    }
    WindowPictures pictures(model, window, *line.picturesFolder);
    spawn(takePictures(&pictures, line.files));
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    if (needsNoDisplay(argc, argv))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    nameApplication();
    const CommandLine line = readCommandLine(QCoreApplication::arguments());
    QApplication::setQuitOnLastWindowClosed(false); // the window decides
    raiseDescriptorLimit();
    preparePictureDecoding();
    applyAppearance(application);
    try {
        return runWindow(line);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
