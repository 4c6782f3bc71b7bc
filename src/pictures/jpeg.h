#pragma once

#include <QByteArray>
#include <QImage>

#include <optional>
#include <stop_token>

namespace folvane {

/// What the header of a JPEG file says.
struct JpegInfo {
    int width = 0;
    int height = 0;
    int components = 0;
    /// It decodes to RGB or grey, in the same colours, in every PDF reader: baseline or progressive Huffman
    /// coding of 8 bits, one component, or three whose colour model all readers agree on.
    bool isRgbOrGrey = false;
    int orientation = 1; ///< EXIF 1 to 8; 1 if there is none or a bad one
    QByteArray iccProfile;
    bool progressive = false;
    bool arithmetic = false;
    int bitsPerSample = 8;
};

/// The most pixels a JPEG may have.
inline constexpr qint64 maxJpegPixels = qint64(1) << 28;

/// Reads the header only. Nothing when the bytes are no JPEG or its size is none or beyond maxJpegPixels.
std::optional<JpegInfo> inspectJpeg(const QByteArray& bytes);

/// Baseline JPEG with optimised Huffman tables. Format_Grayscale8 becomes one component, all else YCbCr with
/// halved colour resolution. quality is 1 to 100. Empty when it cannot be made, and soon after a stop.
QByteArray encodeJpeg(const QImage& image, int quality, const std::stop_token& stop = {});

/// Decodes at scaleNumerator (1 to 8) eighths of the size, rounded up, to Format_RGB888 or Format_Grayscale8;
/// neither turned nor colour-converted. Nothing when it is damaged beyond use, has other than one or three
/// components, or takes too much memory; and soon after a stop.
std::optional<QImage> decodeJpeg(const QByteArray& bytes, int scaleNumerator,
                                 const std::stop_token& stop = {});

/// Process inks as they stand in a file, four bytes a pixel without padding. Most programs write them into
/// JPEG files inverted, 255 meaning no ink, and set a marker by which isInverted is told.
struct InkSamples {
    int width = 0;
    int height = 0;
    bool isInverted = false;
    QByteArray samples; ///< cyan, magenta, yellow, black
};

/// As decodeJpeg(), for four components (CMYK or YCCK).
std::optional<InkSamples> decodeCmykJpeg(const QByteArray& bytes, int scaleNumerator,
                                         const std::stop_token& stop = {});

} // namespace folvane
