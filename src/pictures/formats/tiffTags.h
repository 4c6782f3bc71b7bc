#pragma once

#include <QByteArrayView>

namespace folvane {

/// One of the pictures in a TIFF block, as TIFF files and EXIF have it (TIFF 6.0, section 2; also with offsets of 64 bits).
struct TiffDirectory {
    int index = 0;      ///< from 0, in the order of the chain
    quint64 offset = 0; ///< of its tags; 0 when there is none
};

/// The picture with the most pixels, the first of equal ones: what stands beside it is smaller versions of it.
TiffDirectory largestTiffDirectory(QByteArrayView tiff);

/// How many values a pixel has: 1 where that is not told.
quint64 tiffSamplesPerPixel(QByteArrayView tiff, const TiffDirectory& directory);

/// Orientation 1 to 8; 1 if there is none or a bad one.
int tiffOrientation(QByteArrayView tiff, const TiffDirectory& directory);
/// That of the first directory, the one that tells of the picture around an EXIF block.
int exifOrientation(QByteArrayView exif);

/// The ICC profile, or nothing.
QByteArrayView tiffProfile(QByteArrayView tiff, const TiffDirectory& directory);

} // namespace folvane
