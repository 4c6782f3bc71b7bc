#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <QSizeF>

#include <string>

namespace folvane::pdf {

enum class FrameShape { Box, Circle };

/// What a field has around its value (ISO 32000-1, 12.5.4 and 12.5.6.19), in a box with its lower left corner at the origin.
struct WidgetFrame {
    std::string content;    ///< background and border; empty for neither
    double borderWidth = 0; ///< what the border takes on each side, in points
};

WidgetFrame widgetFrame(QPDFObjectHandle widget, QSizeF size, FrameShape shape);

} // namespace folvane::pdf
