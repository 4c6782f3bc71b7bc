#include "pictures/samplesOf.h"

#include <utility>

namespace folvane {

ImageSamples samplesOf(const QImage& image, std::optional<int> channels)
{
    ImageSamples samples{image.size(), channels ? *channels : image.allGray() ? 1 : 3, {}};
    samples.bytes.resize(samples.stride() * static_cast<size_t>(image.height()));
    const auto step = static_cast<size_t>(3 / samples.channels);
    for (int y = 0; y < image.height(); ++y) {
        const uchar* from = image.constScanLine(y);
        uint8_t* to = samples.row(y);
        for (size_t i = 0, count = samples.stride(); i < count; ++i)
            to[i] = from[step * i];
    }
    return samples;
}

SampleView viewOf(const QImage& image)
{
    return {image.constBits(), static_cast<size_t>(image.bytesPerLine()), image.size(), image.depth() / 8};
}

namespace {

QImage::Format formatOf(int channels)
{
    switch (channels) {
    case 1: return QImage::Format_Grayscale8;
    case 4: return QImage::Format_RGBA8888_Premultiplied;
    default: return QImage::Format_RGB888;
    }
}

} // namespace

QImage imageOf(ImageSamples samples)
{
    auto* kept = new ImageSamples(std::move(samples));
    const auto letGo = [](void* held) { delete static_cast<ImageSamples*>(held); };
    return QImage(kept->bytes.data(), kept->size.width(), kept->size.height(),
                  static_cast<qsizetype>(kept->stride()), formatOf(kept->channels), letGo, kept);
}

} // namespace folvane
