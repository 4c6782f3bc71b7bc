#include "pictures/samplesOf.h"

#include <utility>

namespace folvane {

namespace {

bool isGrey(const QImage& image)
{
    const int bytes = 3 * image.width();
    for (int y = 0; y < image.height(); ++y) {
        const uchar* row = image.constScanLine(y);
        unsigned differences = 0;
        for (int x = 0; x < bytes; x += 3)
            differences |= unsigned(row[x] ^ row[x + 1]) | unsigned(row[x] ^ row[x + 2]);
        if (differences)
            return false;
    }
    return true;
}

} // namespace

ImageSamples samplesOf(const QImage& image)
{
    ImageSamples samples{image.size(), isGrey(image) ? 1 : 3, {}};
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

QImage imageOf(ImageSamples samples)
{
    auto* kept = new ImageSamples(std::move(samples));
    const auto letGo = [](void* held) { delete static_cast<ImageSamples*>(held); };
    return QImage(kept->bytes.data(), kept->size.width(), kept->size.height(),
                  static_cast<qsizetype>(kept->stride()),
                  kept->channels == 1 ? QImage::Format_Grayscale8 : QImage::Format_RGB888, letGo, kept);
}

} // namespace folvane
