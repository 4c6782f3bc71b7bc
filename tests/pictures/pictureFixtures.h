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

/// A GIF of one frame from a picture of at most 128 palette colours. Qt writes none.
QByteArray gifFile(const QImage& image, int transparentIndex = -1);

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

enum class JpegModel { Rgb, RgbWithoutMarker, Cmyk, CmykAdobe, YcckAdobe };

struct JpegOptions {
    JpegModel model = JpegModel::Rgb;
    bool progressive = false;
    bool arithmetic = false;
};

/// One colour throughout, as samples of the model: three or four bytes.
QByteArray plainJpeg(const QByteArray& sample, const JpegOptions& options, QSize size = {32, 32});

/// ICC profiles: RGB with red and green exchanged (matrix), and the same as a lookup table.
QByteArray swappedProfile();
QByteArray swappedTableProfile();
QByteArray linearGreyProfile();
/// A table by which every ink is green: what no formula would come to.
QByteArray greenInksProfile();
QByteArray displayP3Profile();

struct TiffOptions {
    int bits = 8;
    bool separate = false; ///< a plane for each ink
    int tile = 0;          ///< side of a tile; 0: strips of 16 rows
    QByteArray iccProfile{};
};

/// Process inks in four fields, from the top left in reading order: cyan, magenta, yellow, none. 64 x 32
/// pixels.
QByteArray inkTiff(const TiffOptions& options);

struct TiffPicture {
    QColor colour;
    QSize size;
    int orientation = 1;
};

/// One picture after another.
QByteArray tiffFile(const QList<TiffPicture>& pictures);

enum class HeifCodec { Hevc, Av1 };

struct HeifOptions {
    HeifCodec codec = HeifCodec::Hevc;
    int orientation = 1; ///< written as rotation and mirroring
    QByteArray iccProfile{};
    int primaries = 0; ///< H.273 code points, when not 0
    int transfer = 13;
};

QByteArray heifFile(const QImage& image, const HeifOptions& options);

} // namespace folvane
