#pragma once

#include "pictures/ImageSamples.h"

#include <QByteArray>
#include <QImage>

#include <stop_token>

namespace folvane {

/// Whether colour is kept at half resolution, which nobody sees in photos, or as it is, for clean edges of coloured lines.
enum class Chroma { Half, Full };

/// Baseline JPEG with optimised Huffman tables (up to 55 megapixels in colour): grey, YCbCr for three channels, YCCK with
/// its marker for four. quality is 1 to 100. Empty when it cannot be made, and soon after a stop.
QByteArray encodeJpeg(const SampleView& picture, int quality, const std::stop_token& stop = {},
                      Chroma chroma = Chroma::Half);

/// Format_Grayscale8 becomes one channel, all else three.
QByteArray encodeJpeg(const QImage& image, int quality, const std::stop_token& stop = {});

/// No JPEG of this size is smaller, in bytes, whatever it shows.
qint64 leastJpegBytes(QSize size, int channels);

} // namespace folvane
