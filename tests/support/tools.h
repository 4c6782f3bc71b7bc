#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace folvane {

/// What an outside program made of its input: tests judge our files by other eyes than those that wrote them.
struct ToolResult {
    int exitCode = -1; ///< -1: it could not be run, or crashed
    QByteArray output;
    QByteArray errors;
};

inline ToolResult runTool(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(60'000) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

/// The text of a PDF, page by page between form feeds.
inline QString textOf(const QString& path)
{
    return QString::fromUtf8(runTool(QStringLiteral("pdftotext"), {path, QStringLiteral("-")}).output);
}

/// Empty when qpdf finds no fault, else what it says.
inline QByteArray faultsOf(const QString& path, const QStringList& options = {})
{
    const ToolResult result =
        runTool(QStringLiteral("qpdf"), QStringList{QStringLiteral("--check")} + options + QStringList{path});
    return result.exitCode == 0
               ? QByteArray()
               : "exit " + QByteArray::number(result.exitCode) + ": " + result.output + result.errors;
}

} // namespace folvane
