#pragma once

#include <QByteArrayView>

namespace folvane {

// Tags of the first directory of a TIFF block, as TIFF files and EXIF have it. (TIFF 6.0, section 2.)

/// Orientation 1 to 8; 1 if there is none or a bad one.
int tiffOrientation(QByteArrayView tiff);

/// The ICC profile, or nothing.
QByteArrayView tiffProfile(QByteArrayView tiff);

} // namespace folvane
