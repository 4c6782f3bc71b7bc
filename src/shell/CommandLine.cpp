#include "shell/CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace folvane {

namespace {

[[noreturn]] void refuse(const QCommandLineParser& parser, const QString& why)
{
    std::fprintf(stderr, "%s\n\n%s", qPrintable(why), qPrintable(parser.helpText()));
    std::exit(2);
}

/// Qt takes a path that begins with a colon for one of the program's own resources.
QUrl fileNamed(const QString& argument)
{
    if (argument.startsWith(u':'))
        return QUrl::fromLocalFile(QDir::currentPath() + u'/' + argument);
    return QUrl::fromUserInput(argument, QDir::currentPath(), QUrl::AssumeLocalFile);
}

} // namespace

bool needsNoDisplay(int count, const char* const* arguments)
{
    return std::any_of(arguments, arguments + count, [](std::string_view argument) {
        return argument == "-h" || argument == "-v" || argument.starts_with("--help")
               || argument == "--version";
    });
}

CommandLine readCommandLine(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(
        QStringLiteral("FILES"),
        QCoreApplication::translate("folvane::CommandLine", "PDFs and images to open."),
        QStringLiteral("[FILES]"));
    if (!parser.parse(arguments))
        refuse(parser, parser.errorText());
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp();
    if (parser.isSet(QStringLiteral("version")))
        parser.showVersion();

    CommandLine line;
    for (const QString& file : parser.positionalArguments())
        line.files.append(fileNamed(file));
    return line;
}

QString activationTokenOfStart()
{
    const QString token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    return token.isEmpty() ? qEnvironmentVariable("DESKTOP_STARTUP_ID") : token;
}

} // namespace folvane
