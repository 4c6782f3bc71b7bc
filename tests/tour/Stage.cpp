#include "tour/Stage.h"

#include "config.h"
#include "controls/appearance.h"
#include "pictures/pictures.h"
#include "platform/files/SourceFile.h"
#include "platform/files/writeFile.h"

#include <QApplication>
#include <QFile>
#include <QUrl>

namespace folvane {

namespace {

// A screen of 3840 x 2160 pixels: at 200 % there is room for a window of 1920 x 1080.
constexpr const char* screens =
    R"({"windowFrameMargins": false, "screens": [{"name": "screen", "x": 0, "y": 0,
    "width": 3840, "height": 2160, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";

bool needsScreen()
{
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    const bool hasDisplay =
        qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    return platform == "offscreen" || (platform.isEmpty() && !hasDisplay);
}

} // namespace

Stage::Stage()
{
    window.move(0, 0);
    window.show();
}

void prepareEnvironment(const QString& folder)
{
    for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
        qputenv(name, QFile::encodeName(folder + u'/' + QLatin1String(name)));
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder));
    if (!needsScreen())
        return;
    const QString file = folder + QStringLiteral("/screens.json");
    writeFile(QUrl::fromLocalFile(file), screens);
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(file));
}

void prepareApplication()
{
    QCoreApplication::setOrganizationName(config::makerName.toString());
    QCoreApplication::setApplicationName(config::appName.toString());
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setCursorFlashTime(0); // pictures do not depend on the moment
    raiseDescriptorLimit();
    preparePictureDecoding();
    applyAppearance(*qApp);
}

} // namespace folvane
