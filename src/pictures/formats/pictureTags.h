#pragma once

#include "pictures/formats/pictureFormat.h"

#include <QByteArray>

namespace folvane {

// What Qt's readers leave aside or lose: they know no lookup-table profiles, and the turn of JPEG and TIFF only. Of the
// pictures in a TIFF file the largest counts.

/// The EXIF orientation that a PNG, WebP or TIFF file carries, 1 to 8; 1 for all else.
int orientationInFile(QByteArrayView bytes, PictureFormat format);

/// The ICC profile of a PNG, WebP or TIFF file, or nothing.
QByteArray profileInFile(QByteArrayView bytes, PictureFormat format);

} // namespace folvane
