#include "pictures/fillHoles.h"

namespace folvane {

namespace {

struct Halved {
    ImageSamples samples;
    std::vector<uint8_t> holes;
};

size_t indexOf(QSize size, int x, int y)
{
    return static_cast<size_t>(y) * static_cast<size_t>(size.width()) + static_cast<size_t>(x);
}

/// The average of the known ones of up to four pixels; false when there is none.
bool averageKnown(const ImageSamples& from, const std::vector<uint8_t>& holes, int x, int y, uint8_t* to)
{
    int sums[4] = {};
    int known = 0;
    for (int v = y; v < std::min(y + 2, from.size.height()); ++v) {
        for (int u = x; u < std::min(x + 2, from.size.width()); ++u) {
            if (holes[indexOf(from.size, u, v)])
                continue;
            ++known;
            for (int c = 0; c < from.channels; ++c)
                sums[c] += from.row(v)[u * from.channels + c];
        }
    }
    for (int c = 0; c < from.channels && known > 0; ++c)
        to[c] = static_cast<uint8_t>((sums[c] + known / 2) / known);
    return known > 0;
}

Halved halved(const ImageSamples& from, const std::vector<uint8_t>& holes, const std::stop_token& stop)
{
    const QSize size((from.size.width() + 1) / 2, (from.size.height() + 1) / 2);
    const auto pixels = static_cast<size_t>(pixelCount(size));
    Halved half{{size, from.channels, std::vector<uint8_t>(pixels * static_cast<size_t>(from.channels))},
                std::vector<uint8_t>(pixels)};
    for (int y = 0; y < size.height() && !stop.stop_requested(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            half.holes[indexOf(size, x, y)] =
                !averageKnown(from, holes, 2 * x, 2 * y, half.samples.row(y) + x * from.channels);
    }
    return half;
}

} // namespace

// Pull and push: what is known is averaged into ever smaller pictures, whose holes shrink, and then flows back.
void fillHoles(ImageSamples& samples, const std::vector<uint8_t>& holes, const std::stop_token& stop)
{
    const bool hasHoles =
        std::find_if(holes.begin(), holes.end(), [](uint8_t hole) { return hole != 0; }) != holes.end();
    if (!hasHoles || pixelCount(samples.size) <= 1)
        return;
    Halved half = halved(samples, holes, stop);
    fillHoles(half.samples, half.holes, stop);
    for (int y = 0; y < samples.size.height() && !stop.stop_requested(); ++y) {
        for (int x = 0; x < samples.size.width(); ++x) {
            if (holes[indexOf(samples.size, x, y)])
                std::copy_n(half.samples.row(y / 2) + x / 2 * samples.channels, samples.channels,
                            samples.row(y) + x * samples.channels);
        }
    }
}

} // namespace folvane
