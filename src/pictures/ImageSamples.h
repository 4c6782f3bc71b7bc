#pragma once

#include <QRect>
#include <QSize>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace folvane {

/// A picture in memory of somebody else: eight bits a sample, rows from the top, the samples of a pixel side by side.
struct SampleView {
    const uint8_t* samples;
    size_t stride; ///< bytes from row to row
    QSize size;
    int channels;

    const uint8_t* row(int y) const { return samples + static_cast<size_t>(y) * stride; }
    /// Of a box within it.
    SampleView part(QRect box) const
    {
        return {row(box.top()) + static_cast<size_t>(box.left()) * static_cast<size_t>(channels), stride,
                box.size(), channels};
    }
};

/// A decoded picture: eight bits a sample, rows from the top without padding, the samples of a pixel side by side.
struct ImageSamples {
    QSize size;
    int channels = 0;
    std::vector<uint8_t> bytes;

    size_t stride() const { return static_cast<size_t>(size.width()) * static_cast<size_t>(channels); }
    uint8_t* row(int y) { return bytes.data() + static_cast<size_t>(y) * stride(); }
    const uint8_t* row(int y) const { return bytes.data() + static_cast<size_t>(y) * stride(); }
    SampleView view() const { return {bytes.data(), stride(), size, channels}; }
};

/// The most pixels that an image may have to be decoded at all.
inline constexpr qint64 maxImagePixels = qint64(1) << 28;
/// The most bytes that an image may have, as it is stored.
inline constexpr qint64 maxStoredBytes = qint64(256) << 20;

inline qint64 pixelCount(QSize size)
{
    return qint64(size.width()) * size.height();
}

/// The size with its long side at most `longest`, in the same proportions. It never grows.
inline QSize sizeWithin(QSize size, int longest)
{
    const int side = std::max(size.width(), size.height());
    if (side <= longest)
        return size;
    const auto scaled = [&](int value) {
        return static_cast<int>(
            std::max<qint64>(1, (2 * qint64(value) * longest + side) / (2 * qint64(side))));
    };
    return {scaled(size.width()), scaled(size.height())};
}

} // namespace folvane
