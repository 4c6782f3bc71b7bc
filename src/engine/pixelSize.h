#pragma once

#include <QSize>
#include <QSizeF>

namespace folvane {

/// Points times `scale`, rounded to the nearest pixel with halves away from zero, at least 1.
QSize pixelSize(QSizeF points, double scale);

} // namespace folvane
