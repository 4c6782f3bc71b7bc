#pragma once

#include "support/tools.h"

#include <QImage>

#include <stdexcept>

namespace folvane {

/// A code as zint draws it, which knows the kind by this name.
inline QImage drawnCode(const QString& kind, const QString& text)
{
    const ToolResult drawing =
        runTool(QStringLiteral("zint"),
                {QStringLiteral("-b"), kind, QStringLiteral("-d"), text, QStringLiteral("--scale=2"),
                 QStringLiteral("--direct"), QStringLiteral("--filetype=PNG")});
    if (drawing.exitCode != 0)
        throw std::runtime_error("zint draws no code: " + drawing.errors.toStdString());
    return QImage::fromData(drawing.output).convertToFormat(QImage::Format_RGB32);
}

} // namespace folvane
