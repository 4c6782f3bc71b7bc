#pragma once

#include <QImage>

namespace folvane {

/// The picture turned and mirrored from an EXIF orientation, 1 to 8, to the one people see.
QImage upright(const QImage& image, int orientation);

} // namespace folvane
