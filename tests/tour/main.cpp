#include "tour/Stage.h"
#include "tour/steps.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QProcess>

#include <cstdio>

namespace {

using namespace folvane;

constexpr int usageFault = 2;

/// The walk, in its order.
constexpr std::pair<const char*, TourStep*> walk[] = {{"home", showHome},
                                                      {"documents", showDocuments},
                                                      {"browsing", showBrowsing},
                                                      {"selecting", showSelecting},
                                                      {"dragging", showDragging},
                                                      {"menus", showMenus},
                                                      {"passwords", showPasswords},
                                                      {"saving", showSaving},
                                                      {"compressing", showCompressing},
                                                      {"merging", showMerging},
                                                      {"splitting", showSplitting},
                                                      {"protecting", showProtecting},
                                                      {"exporting", showExporting},
                                                      {"alerts", showAlerts},
                                                      {"long names", showLongNames},
                                                      {"file list", showFileList},
                                                      {"making stamps", showMakingStamps},
                                                      {"stamps", showStamps},
                                                      {"signing", showSigning},
                                                      {"signing sizes", showSigningSizes},
                                                      {"reading codes", showReadingCodes},
                                                      {"code cards", showCodeCards},
                                                      {"offers", showOffers},
                                                      {"about", showAbout},
                                                      {"sizes", showSizes}};

int s_warnings = 0;

// Without a display much of what a platform can do is missing, and its plugin says so. Any other warning is a fault of
// the window.
void tellWarning(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (message.startsWith("This plugin does not support"))
        return;
    if (type != QtDebugMsg && type != QtInfoMsg)
        ++s_warnings;
    std::fprintf(stderr, "%s\n", qPrintable(message));
}

void readOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        "Plays a person's way through the real windows, checks what comes out, and leaves a "
        "picture of every screen.");
    parser.addHelpOption();
    parser.addOptions({{"to", "Where the pictures go.", "FOLDER"},
                       {"pages", "Pages of the large document.", "N", "5000"},
                       {"only", "Play this step alone.", "STEP"},
                       {"unscaled", "Leave out the round at 200 %."}});
    parser.process(*qApp);
    if (!parser.isSet("to") || parser.value("pages").toInt() < 1)
        parser.showHelp(usageFault);
}

void play(const TourOptions& options, const QString& only)
{
    if (!options.folder.mkpath("."))
        throw TourFailed(QStringLiteral("%1 cannot be made.").arg(options.folder.path()));
    int pictures = 0;
    for (const auto& [name, step] : walk) {
        if (only.isEmpty() || only == name)
            pictures = Tour(options, pictures).play(name, step);
    }
    if (pictures == 0)
        throw TourFailed(QStringLiteral("There is no step “%1”.").arg(only));
}

/// The scale of a process is fixed when it starts: the round at 200 % is a process of its own. Of options that are
/// given twice, the last one counts.
void playScaled(const QDir& folder)
{
    std::printf("At 200 %%:\n");
    std::fflush(stdout);
    qputenv("QT_SCALE_FACTOR", "2");
    const QStringList scaled{"--to", folder.filePath("200"), "--unscaled"};
    if (QProcess::execute(qApp->applicationFilePath(), qApp->arguments().mid(1) + scaled) != 0)
        throw TourFailed("The round at 200 % failed.");
}

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    prepareEnvironment(home.path());
    qInstallMessageHandler(tellWarning);
    const QApplication application(argc, argv);
    prepareApplication();
    QCommandLineParser parser;
    readOptions(parser);
    const TourOptions options{QDir(parser.value("to")), parser.value("pages").toInt()};
    try {
        play(options, parser.value("only"));
        if (!parser.isSet("unscaled"))
            playScaled(options.folder);
        if (s_warnings > 0)
            throw TourFailed(QStringLiteral("There were %1 warnings.").arg(s_warnings));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
