#pragma once

#include <QList>
#include <QString>
#include <QUrl>

namespace folvane {

/// What the program was started with.
struct CommandLine {
    QList<QUrl> files;
};

/// Reads the arguments, the program's name first; file names are relative to the working folder. Prints help and ends
/// the process on --help, --version, and anything that it does not know.
CommandLine readCommandLine(const QStringList& arguments);

/// Whether the arguments ask for something that needs no display: looked at before there is an application.
bool needsNoDisplay(int count, const char* const* arguments);

/// What the desktop gave to this start so that its window may come to the front: an xdg-activation token or a start-up
/// id, empty without either. Read it before there is an application, which takes it away.
QString activationTokenOfStart();

} // namespace folvane
