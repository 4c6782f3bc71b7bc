#include "pdf/transparency.h"

#include "pdf/ImageSamples.h"
#include "pdf/fillHoles.h"

namespace folvane::pdf {

namespace {

constexpr int channels = 4, colours = 3;

/// A picture at half its size, and where it shows nothing.
struct Half {
    ImageSamples samples;
    std::vector<uint8_t> holes;
};

/// The average of the pixels of two rows, of one column or two, that are not fully transparent. False when all are.
bool averageSeen(const uchar* const (&rows)[2], int x, int width, uint8_t* to)
{
    int sums[colours] = {}, seen = 0;
    for (const uchar* row : rows) {
        for (int at = x; at < std::min(x + 2, width); ++at) {
            const uchar* pixel = row + channels * at;
            const int isSeen = pixel[colours] != 0;
            seen += isSeen;
            for (int c = 0; c < colours; ++c)
                sums[c] += isSeen * pixel[c];
        }
    }
    for (int c = 0; c < colours && seen > 0; ++c)
        to[c] = static_cast<uint8_t>((sums[c] + seen / 2) / seen);
    return seen > 0;
}

Half halved(const QImage& picture, const std::stop_token& stop)
{
    const QSize size((picture.width() + 1) / 2, (picture.height() + 1) / 2);
    const auto pixels = static_cast<size_t>(pixelCount(size));
    Half half{{size, colours, std::vector<uint8_t>(pixels * colours)}, std::vector<uint8_t>(pixels)};
    uint8_t* hole = half.holes.data();
    for (int y = 0; y < size.height() && !stop.stop_requested(); ++y) {
        const uchar* rows[2] = {picture.constScanLine(2 * y),
                                picture.constScanLine(std::min(2 * y + 1, picture.height() - 1))};
        uint8_t* to = half.samples.row(y);
        for (int x = 0; x < size.width(); ++x, to += colours)
            *hole++ = !averageSeen(rows, 2 * x, picture.width(), to);
    }
    return half;
}

} // namespace

QImage withoutTransparency(QImage picture, const std::stop_token& stop)
{
    Half half = halved(picture, stop);
    fillHoles(half.samples, half.holes, stop);
    for (int y = 0; y < picture.height() && !stop.stop_requested(); ++y) {
        uchar* to = picture.scanLine(y);
        const uint8_t* from = half.samples.row(y / 2);
        for (int x = 0; x < picture.width(); ++x, to += channels) {
            if (to[colours] == 0)
                std::copy_n(from + x / 2 * colours, colours, to);
            to[colours] = 255;
        }
    }
    half = {};
    if (stop.stop_requested() || !picture.reinterpretAsFormat(QImage::Format_RGBX8888))
        return {};
    return std::move(picture).convertToFormat(QImage::Format_RGB888);
}

} // namespace folvane::pdf
