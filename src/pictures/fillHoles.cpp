#include "pictures/fillHoles.h"

#include "pictures/samplesOf.h"

#include <QRect>

namespace folvane {

namespace {

constexpr int coarseSide = 4; // of squares that become one pixel: so it stays small beside a whole picture

/// A picture made smaller: a square of pixels becomes one. Where all of them are holes it is one, too.
struct Shrunk {
    ImageSamples samples;
    std::vector<uint8_t> holes;
};

size_t indexOf(QSize size, int x, int y)
{
    return static_cast<size_t>(y) * static_cast<size_t>(size.width()) + static_cast<size_t>(x);
}

/// The average of the pixels of a square that are no holes, of as many samples as are looked at. False when all are.
template <typename IsHole>
bool averageSeen(const SampleView& from, const QRect& square, int channels, const IsHole& isHole, uint8_t* to)
{
    int sums[4] = {}, seen = 0;
    for (int y = square.top(); y <= square.bottom(); ++y) {
        const uint8_t* pixel = from.row(y) + square.left() * from.channels;
        for (int x = square.left(); x <= square.right(); ++x, pixel += from.channels) {
            const int isSeen = !isHole(pixel, x, y);
            seen += isSeen;
            for (int c = 0; c < channels; ++c)
                sums[c] += isSeen * pixel[c];
        }
    }
    for (int c = 0; c < channels && seen > 0; ++c)
        to[c] = static_cast<uint8_t>((sums[c] + seen / 2) / seen);
    return seen > 0;
}

/// The first `channels` of each pixel, in squares of that side.
template <typename IsHole>
Shrunk shrunk(const SampleView& from, int side, int channels, const IsHole& isHole,
              const std::stop_token& stop)
{
    const QSize size((from.size.width() + side - 1) / side, (from.size.height() + side - 1) / side);
    const auto pixels = static_cast<size_t>(pixelCount(size));
    Shrunk small{{size, channels, std::vector<uint8_t>(pixels * static_cast<size_t>(channels))},
                 std::vector<uint8_t>(pixels)};
    const QRect all({0, 0}, from.size);
    uint8_t* hole = small.holes.data();
    for (int y = 0; y < size.height() && !stop.stop_requested(); ++y) {
        uint8_t* to = small.samples.row(y);
        for (int x = 0; x < size.width(); ++x, to += channels)
            *hole++ = !averageSeen(from, QRect(side * x, side * y, side, side) & all, channels, isHole, to);
    }
    return small;
}

} // namespace

// Pull and push: what is seen is averaged into ever smaller pictures, whose holes shrink, and then flows back.
void fillHoles(ImageSamples& samples, const std::vector<uint8_t>& holes, const std::stop_token& stop)
{
    const bool hasHoles = std::ranges::any_of(holes, [](uint8_t hole) { return hole != 0; });
    if (!hasHoles || pixelCount(samples.size) <= 1)
        return;
    const auto isHole = [&](const uint8_t*, int x, int y) { return holes[indexOf(samples.size, x, y)] != 0; };
    Shrunk half = shrunk(samples.view(), 2, samples.channels, isHole, stop);
    fillHoles(half.samples, half.holes, stop);
    for (int y = 0; y < samples.size.height() && !stop.stop_requested(); ++y) {
        for (int x = 0; x < samples.size.width(); ++x) {
            if (holes[indexOf(samples.size, x, y)])
                std::copy_n(half.samples.row(y / 2) + x / 2 * samples.channels, samples.channels,
                            samples.row(y) + x * samples.channels);
        }
    }
}

QImage withoutTransparency(QImage picture, const std::stop_token& stop)
{
    constexpr int channels = 4, colours = 3;
    const SampleView view = viewOf(picture);
    const auto isHole = [](const uint8_t* pixel, int, int) { return pixel[colours] == 0; };
    Shrunk coarse = shrunk(view, coarseSide, colours, isHole, stop);
    fillHoles(coarse.samples, coarse.holes, stop);
    for (int y = 0; y < picture.height() && !stop.stop_requested(); ++y) {
        uchar* to = picture.scanLine(y);
        const uint8_t* from = coarse.samples.row(y / coarseSide);
        for (int x = 0; x < picture.width(); ++x, to += channels) {
            if (to[colours] == 0)
                std::copy_n(from + x / coarseSide * colours, colours, to);
            to[colours] = 255;
        }
    }
    coarse = {};
    if (stop.stop_requested() || !picture.reinterpretAsFormat(QImage::Format_RGBX8888))
        return {};
    return std::move(picture).convertToFormat(QImage::Format_RGB888);
}

} // namespace folvane
