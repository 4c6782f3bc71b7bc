#pragma once

#include "support/TestFolder.h"
#include "support/tools.h"

#include <QImage>

namespace folvane {

/// A code as zint draws it, which knows the kind by this name.
inline QImage drawnCode(const TestFolder& folder, const QString& kind, const QString& text)
{
    const QString path = folder.path(kind + QStringLiteral(".png"));
    const ToolResult drawing = runTool(
        QStringLiteral("zint"), {QStringLiteral("-b"), kind, QStringLiteral("-d"), text,
                                 QStringLiteral("--scale=2"), QStringLiteral("-o"), path});
    if (drawing.exitCode != 0)
        throw std::runtime_error("zint draws no code: " + drawing.errors.toStdString());
    return QImage(path).convertToFormat(QImage::Format_RGB32);
}

} // namespace folvane
