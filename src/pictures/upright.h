#pragma once

#include <QImage>

namespace folvane {

/// The picture as an EXIF orientation (1 to 8) wants it shown; as it is for any other number.
QImage upright(const QImage& image, int orientation);

} // namespace folvane
