#pragma once

#include <QByteArray>
#include <QSize>

#include <cstddef>
#include <cstdint>
#include <stop_token>

namespace folvane {

/// A picture of eight bits a sample, rows from the top, the samples of a pixel side by side.
struct SampleView {
    const uint8_t* samples;
    size_t stride; ///< bytes from row to row
    QSize size;
    int channels; ///< 1 (grey), 3 (RGB) or 4 (inks, as they shall stand in the file)
};

/// Baseline JPEG with optimised Huffman tables (up to 55 megapixels in colour): grey, YCbCr for three channels, YCCK with
/// its marker for four, colour at half resolution. quality is 1 to 100. Empty when it cannot be made, and soon after a stop.
QByteArray encodedJpeg(const SampleView& picture, int quality, const std::stop_token& stop = {});

} // namespace folvane
