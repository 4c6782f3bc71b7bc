#pragma once

#include <QByteArray>
#include <QColor>
#include <QImage>

namespace folvane {

/// Four fields, from the top left in reading order: red, green, blue, white. Wider than high.
QImage fourFields(QImage::Format format = QImage::Format_RGB888, QSize size = {64, 32});

/// Every pixel in one colour.
QImage plain(QColor colour, QImage::Format format = QImage::Format_RGB888, QSize size = {32, 32});

/// The picture as a file, by Qt.
QByteArray encoded(const QImage& image, const char* format);

/// A file of tests/pictures/samples: pictures that Qt does not write, and colour profiles. Their README tells what is in them.
QByteArray sample(const QString& name);

/// An EXIF block that says only the orientation, starting at its TIFF header.
QByteArray exifBlock(int orientation, bool bigEndian);

/// The file with a marker segment behind its start: APP1 with EXIF, APP2 with a profile …
QByteArray withJpegSegment(const QByteArray& jpeg, uchar marker, const QByteArray& content);
QByteArray withJpegExif(const QByteArray& jpeg, const QByteArray& block);
QByteArray withJpegProfile(const QByteArray& jpeg, const QByteArray& profile);

/// The file with a chunk behind its header.
QByteArray withPngChunk(const QByteArray& png, const QByteArray& name, const QByteArray& content);
/// The file claiming another size.
QByteArray withPngSize(QByteArray png, QSize size);
QByteArray withPngProfile(const QByteArray& png, const QByteArray& profile);

} // namespace folvane
