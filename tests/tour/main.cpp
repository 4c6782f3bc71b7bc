#include "tour/Stage.h"
#include "tour/TourFailed.h"
#include "tour/steps.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QProcess>

#include <cstdio>

namespace {

using namespace folvane;

constexpr int usageFault = 2;

struct Options {
    TourOptions tour;
    QString only;
    bool alsoScaled = true;
};

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

Options readOptions()
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Plays a person's way through the real windows, checks what comes out, and leaves a "
        "picture of every screen.");
    parser.addHelpOption();
    parser.addOptions({{"to", "Where the pictures go.", "FOLDER"},
                       {"pages", "Pages of the large document.", "N", "5000"},
                       {"rounds", "How often the large document is browsed.", "N", "1"},
                       {"only", "Play this step alone.", "STEP"},
                       {"unscaled", "Leave out the round at 200 %."}});
    parser.addPositionalArgument("FILES", "Files to show as well.", "[FILES]");
    parser.process(*qApp);
    const int count = parser.value("pages").toInt();
    if (!parser.isSet("to") || count < 1) {
        std::fprintf(stderr, "%s", qPrintable(parser.helpText()));
        std::exit(usageFault);
    }
    Options options{{QDir(parser.value("to")), count, parser.value("rounds").toInt(), {}},
                    parser.value("only"),
                    !parser.isSet("unscaled")};
    for (const QString& file : parser.positionalArguments())
        options.tour.given.append(QUrl::fromUserInput(file, QDir::currentPath(), QUrl::AssumeLocalFile));
    return options;
}

void play(const Options& options)
{
    Tour tour(options.tour);
    bool any = false;
    for (const TourStep& step : tourSteps) {
        if (!options.only.isEmpty() && options.only != step.name)
            continue;
        any = true;
        tour.play(step);
    }
    if (!any)
        throw TourFailed(QStringLiteral("There is no step “%1”.").arg(options.only));
}

/// The scale of a process is fixed when it starts: the round at 200 % is a process of its own. Of options that are
/// given twice, the last one counts.
void playScaled(const QDir& folder)
{
    std::printf("At 200 %%:\n");
    std::fflush(stdout);
    qputenv("QT_SCALE_FACTOR", "2");
    const QStringList scaled{"--to", folder.filePath("200"), "--unscaled", "--rounds", "1"};
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
    try {
        const Options options = readOptions();
        play(options);
        if (options.alsoScaled)
            playScaled(options.tour.folder);
        if (s_warnings > 0)
            throw TourFailed(QStringLiteral("There were %1 warnings.").arg(s_warnings));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
