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
    QStringList given; ///< as they were given
};

int s_warnings = 0;

// Without a display much of what a platform can do is missing, and its plugin says so. Any other warning is a fault of
// the window.
void tellWarning(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (message.startsWith(QLatin1String("This plugin does not support")))
        return;
    if (type != QtDebugMsg && type != QtInfoMsg)
        ++s_warnings;
    std::fprintf(stderr, "%s\n", qPrintable(message));
}

Options readOptions()
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Plays a person's way through the real windows, checks what comes "
                       "out, and leaves a picture of every screen."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption to(QStringLiteral("to"), QStringLiteral("Where the pictures go."),
                                QStringLiteral("FOLDER"));
    const QCommandLineOption pages(QStringLiteral("pages"), QStringLiteral("Pages of the large document."),
                                   QStringLiteral("N"), QStringLiteral("5000"));
    const QCommandLineOption only(QStringLiteral("only"), QStringLiteral("Play this step alone."),
                                  QStringLiteral("STEP"));
    const QCommandLineOption unscaled(QStringLiteral("unscaled"),
                                      QStringLiteral("Leave out the round at 200 %."));
    const QCommandLineOption rounds(QStringLiteral("rounds"),
                                    QStringLiteral("How often the large document is browsed."),
                                    QStringLiteral("N"), QStringLiteral("1"));
    parser.addOptions({to, pages, rounds, only, unscaled});
    parser.addPositionalArgument(QStringLiteral("FILES"), QStringLiteral("Files to show as well."),
                                 QStringLiteral("[FILES]"));
    parser.process(*qApp);
    const int count = parser.value(pages).toInt();
    if (!parser.isSet(to) || count < 1) {
        std::fprintf(stderr, "%s", qPrintable(parser.helpText()));
        std::exit(usageFault);
    }
    Options options{{QDir(parser.value(to)), count, parser.value(rounds).toInt(), {}},
                    parser.value(only),
                    !parser.isSet(unscaled),
                    parser.positionalArguments()};
    for (const QString& file : options.given)
        options.tour.given.append(QUrl::fromUserInput(file, QDir::currentPath(), QUrl::AssumeLocalFile));
    return options;
}

void play(const Options& options)
{
    Tour tour(options.tour);
    bool any = false;
    for (const TourStep& step : tourSteps) {
        const QString name = QString::fromLatin1(step.name);
        if (!options.only.isEmpty() && options.only != name)
            continue;
        any = true;
        try {
            tour.play(step);
        } catch (const std::exception& error) {
            throw TourFailed(QStringLiteral("%1: %2").arg(name, QString::fromUtf8(error.what())));
        }
    }
    if (!any)
        throw TourFailed(QStringLiteral("There is no step “%1”.").arg(options.only));
}

/// The scale of a process is fixed when it starts: the round at 200 % is a process of its own.
void playScaled(const Options& options)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    QStringList arguments{QStringLiteral("--to"), options.tour.folder.filePath(QStringLiteral("200")),
                          QStringLiteral("--unscaled"), QStringLiteral("--pages"),
                          QString::number(options.tour.manyPages)};
    if (!options.only.isEmpty())
        arguments += {QStringLiteral("--only"), options.only};
    std::printf("At 200 %%:\n");
    std::fflush(stdout);
    process.start(QCoreApplication::applicationFilePath(), arguments + options.given);
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit
        || process.exitCode() != 0)
        throw TourFailed(QStringLiteral("The round at 200 % failed."));
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
            playScaled(options);
        if (s_warnings > 0)
            throw TourFailed(QStringLiteral("There were %1 warnings.").arg(s_warnings));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
