#include "stamps/liftInk.h"

#include "stamps/inBands.h"

#include <array>
#include <memory>

namespace folvane {

namespace {

constexpr int opaqueFrom = 200; // of 255
constexpr double mostSeeThrough = 0.02;

constexpr float low = 0.12F;       // what is less darker than this is paper
constexpr float high = 0.42F;      // what is as dark is ink alone
constexpr float darkestPaper = 40; // below it a dark corner would be stretched to white
constexpr float leastAlpha = 0.02F;
constexpr size_t channels = 4, paperChannels = 3;

float smoothStep(float t)
{
    return t * t * (3 - 2 * t);
}

float alphaOf(float darkness)
{
    const float t = (darkness - low) / (high - low);
    return smoothStep(std::clamp(t, 0.0F, 1.0F));
}

// Single precision in this very order: a reference in another language gives the same bytes.
void liftPixel(uint8_t* __restrict pixel, const uint8_t* __restrict paper)
{
    std::array<float, 3> flat{};
    for (size_t c = 0; c < flat.size(); ++c)
        flat[c] = std::min(float(pixel[c]) / std::max(float(paper[c]), darkestPaper), 1.0F);
    const float alpha = alphaOf(1 - std::min({flat[0], flat[1], flat[2]}));
    if (alpha < leastAlpha) {
        std::fill_n(pixel, channels, uint8_t(0));
        return;
    }
    for (size_t c = 0; c < flat.size(); ++c) {
        const float ink = std::max(1 - (1 - flat[c]) / alpha, 0.0F);
        pixel[c] = static_cast<uint8_t>(alpha * ink * 255);
    }
    pixel[3] = static_cast<uint8_t>(alpha * 255);
}

void liftRow(uint8_t* pixels, const uint8_t* paper, int width)
{
    for (int x = 0; x < width; ++x, pixels += channels, paper += paperChannels)
        liftPixel(pixels, paper);
}

} // namespace

bool hasTransparency(const ImageSamples& pixels)
{
    qint64 seeThrough = 0;
    for (size_t alpha = 3; alpha < pixels.bytes.size(); alpha += channels)
        seeThrough += pixels.bytes[alpha] < opaqueFrom;
    return double(seeThrough) / double(std::max<qint64>(pixelCount(pixels.size), 1)) > mostSeeThrough;
}

ImageSamples liftInk(ImageSamples pixels, ImageSamples paper, const std::stop_token& stop)
{
    const auto lifted = std::make_shared<ImageSamples>(std::move(pixels));
    const auto behind = std::make_shared<const ImageSamples>(std::move(paper));
    inBands(lifted->size.height(), stop, [lifted, behind](int first, int end) {
        for (int y = first; y < end; ++y)
            liftRow(lifted->row(y), behind->row(y), lifted->size.width());
    });
    return std::move(*lifted);
}

} // namespace folvane
