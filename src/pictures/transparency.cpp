#include "pictures/transparency.h"

#include "pictures/ImageSamples.h"
#include "pictures/fillHoles.h"

namespace folvane {

namespace {

constexpr int channels = 4, colours = 3;
constexpr int side = 4; // of the squares of pixels that become one: so it stays small beside the picture

/// A picture made smaller, and where it shows nothing.
struct Small {
    ImageSamples samples;
    std::vector<uint8_t> holes;
};

/// The average of the pixels of a square that are not fully transparent. False when all are.
bool averageSeen(const QImage& picture, int left, int top, uint8_t* to)
{
    int sums[colours] = {}, seen = 0;
    for (int y = top; y < std::min(top + side, picture.height()); ++y) {
        const uchar* pixel = picture.constScanLine(y) + channels * left;
        for (int x = left; x < std::min(left + side, picture.width()); ++x, pixel += channels) {
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

Small madeSmall(const QImage& picture, const std::stop_token& stop)
{
    const QSize size((picture.width() + side - 1) / side, (picture.height() + side - 1) / side);
    const auto pixels = static_cast<size_t>(pixelCount(size));
    Small small{{size, colours, std::vector<uint8_t>(pixels * colours)}, std::vector<uint8_t>(pixels)};
    uint8_t* hole = small.holes.data();
    for (int y = 0; y < size.height() && !stop.stop_requested(); ++y) {
        uint8_t* to = small.samples.row(y);
        for (int x = 0; x < size.width(); ++x, to += colours)
            *hole++ = !averageSeen(picture, side * x, side * y, to);
    }
    return small;
}

} // namespace

QImage withoutTransparency(QImage picture, const std::stop_token& stop)
{
    Small small = madeSmall(picture, stop);
    fillHoles(small.samples, small.holes, stop);
    for (int y = 0; y < picture.height() && !stop.stop_requested(); ++y) {
        uchar* to = picture.scanLine(y);
        const uint8_t* from = small.samples.row(y / side);
        for (int x = 0; x < picture.width(); ++x, to += channels) {
            if (to[colours] == 0)
                std::copy_n(from + x / side * colours, colours, to);
            to[colours] = 255;
        }
    }
    small = {};
    if (stop.stop_requested() || !picture.reinterpretAsFormat(QImage::Format_RGBX8888))
        return {};
    return std::move(picture).convertToFormat(QImage::Format_RGB888);
}

} // namespace folvane
