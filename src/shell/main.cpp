#include "config.h"
#include "controls/appearance.h"
#include "documents/AppModel.h"
#include "engine/PDFEngine.h"
#include "pictures/pictures.h"
#include "platform/desktop/ApplicationService.h"
#include "platform/desktop/Preferences.h"
#include "platform/desktop/Workspace.h"
#include "platform/desktop/sessionBus.h"
#include "platform/files/SourceFile.h"
#include "platform/tasks/Clock.h"
#include "platform/tasks/spawn.h"
#include "platform/texts/translations.h"
#include "shell/ClosedWindowNotice.h"
#include "shell/CommandLine.h"
#include "shell/QtPanels.h"
#include "shell/RootView.h"
#include "shell/SystemEvents.h"

#include <QApplication>

#include <cstdio>
#include <optional>

namespace {

using namespace folvane;

void nameApplication()
{
    QCoreApplication::setOrganizationName(config::makerName.toString());
    QCoreApplication::setApplicationName(config::appName.toString());
    QCoreApplication::setApplicationVersion(config::version.toString());
    QGuiApplication::setDesktopFileName(config::bundleIdentifier.toString());
}

/// The program's parts, in the order in which they need each other.
struct Program {
    explicit Program(const std::optional<QDBusConnection>& bus) : workspace(bus)
    {
        panels.setWindow(&window);
        if (bus)
            notice.emplace(model, window, *bus);
    }

    PDFEngine engine;
    QtPanels panels;
    SettingsPreferences preferences;
    DesktopWorkspace workspace;
    SystemClock clock;
    AppModel model{Services{engine, panels, preferences, workspace, clock}};
    RootView window{model};
    std::optional<ClosedWindowNotice> notice;
};

/// Runs the window, unless another one runs in this session: that one then gets the files.
int runWindow(const CommandLine& line, const QString& activationToken)
{
    using Start = ApplicationService::Start;
    const std::optional<QDBusConnection> bus = sessionBus();
    SystemEvents events;
    ApplicationService service(bus, config::bundleIdentifier.toString());
    QObject::connect(&service, &ApplicationService::opened, &events, &SystemEvents::openInFront);
    const Start start = service.start(line.files, activationToken);
    if (start == Start::HandedOver)
        return 0;

    events.open(line.files);
    Program program(bus);
    program.window.setCanComeBack(start == Start::First);
    program.window.show();
    events.attach(program.model, program.window);
    const int result = QApplication::exec();
    service.retire(); // who starts while this one clears up gets a window of its own
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    if (needsNoDisplay(argc, argv))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QString activationToken = activationTokenOfStart();
    QApplication application(argc, argv);
    nameApplication();
    installTranslations();
    const CommandLine line = readCommandLine(QCoreApplication::arguments());
    QApplication::setQuitOnLastWindowClosed(false); // the window decides
    raiseDescriptorLimit();
    preparePictureDecoding();
    applyAppearance(application);
    try {
        return runWindow(line, activationToken);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
