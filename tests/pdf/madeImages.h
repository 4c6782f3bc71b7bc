#pragma once

#include <QByteArray>
#include <QSize>

namespace folvane::pdf {

/// A picture with slopes, edges and noise, as photographs have them; its corners differ, so that no turned, mirrored,
/// inverted or recoloured copy looks like it. Eight bits a sample.
QByteArray madePhoto(QSize size, int channels);
/// The same with so many bits a sample: rows padded to whole bytes; one bit is dithered.
QByteArray packedPhoto(QSize size, int channels, int bits);

QByteArray deflatedBytes(const QByteArray& bytes);
/// LZW without any gain: a clear code stands before the codes grow to ten bits.
QByteArray lzwBytes(const QByteArray& bytes);
QByteArray runLengthBytes(const QByteArray& bytes);
/// CCITT Group 4 of packed one-bit rows, 0 being black.
QByteArray group4Bytes(const QByteArray& rows, QSize size);

enum class JpegStyle {
    Usual,      ///< grey, YCbCr, inks as they are without a marker
    MarkedInks, ///< by Adobe's marker
    PlainRgb,   ///< without any conversion, and nothing says so
    Ycck        ///< with the marker
};

/// A JPEG at quality 95 of samples with 1, 3 or 4 channels.
QByteArray jpegBytes(const QByteArray& samples, QSize size, int channels, JpegStyle style = JpegStyle::Usual);

QByteArray invertedBytes(QByteArray bytes);

} // namespace folvane::pdf
