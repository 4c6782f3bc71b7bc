#pragma once

#include "pictures/formats/pictureFormat.h"

namespace folvane {

/// False for a BMP or GIF file whose first picture is cut off. Qt's readers of these formats do not tell; all
/// others do, and give true.
bool firstPictureIsComplete(QByteArrayView bytes, PictureFormat format);

} // namespace folvane
