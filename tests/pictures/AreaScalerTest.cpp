#include "pictures/AreaScaler.h"

#include <gtest/gtest.h>

#include <random>

namespace folvane {

namespace {

struct Noise {
    ImageSamples samples;
    std::vector<uint8_t> opacity;
};

Noise noise(QSize size, int channels, bool isOpaque)
{
    std::minstd_rand random(7);
    const auto pixels = static_cast<size_t>(pixelCount(size));
    Noise made{{size, channels, std::vector<uint8_t>(pixels * static_cast<size_t>(channels))},
               std::vector<uint8_t>(pixels, 255)};
    for (uint8_t& sample : made.samples.bytes)
        sample = static_cast<uint8_t>(random() % 256);
    for (uint8_t& value : made.opacity)
        value = isOpaque ? uint8_t(255) : static_cast<uint8_t>(1 + random() % 255);
    return made;
}

/// Of the area of a new pixel, pixel by pixel.
double average(const Noise& of, QSize to, int x, int y, int channel)
{
    const QSize from = of.samples.size;
    const double wide = double(from.width()) / to.width(), high = double(from.height()) / to.height();
    double sum = 0, weights = 0;
    for (int v = 0; v < from.height(); ++v) {
        for (int u = 0; u < from.width(); ++u) {
            const double across = std::min(u + 1.0, (x + 1) * wide) - std::max(double(u), x * wide);
            const double down = std::min(v + 1.0, (y + 1) * high) - std::max(double(v), y * high);
            const double weight = std::max(0.0, across) * std::max(0.0, down)
                                  * of.opacity[static_cast<size_t>(v * from.width() + u)];
            sum += weight * of.samples.row(v)[u * of.samples.channels + channel];
            weights += weight;
        }
    }
    return sum / weights;
}

} // namespace

TEST(AreaScaler, AveragesTheAreaOfEachNewPixel)
{
    struct Row {
        QSize from, to;
        int channels;
        bool isOpaque = true;
    };
    for (const auto& [from, to, channels, isOpaque] :
         {Row{{23, 17}, {7, 5}, 1}, Row{{9, 4}, {1, 1}, 1}, Row{{23, 17}, {22, 17}, 2},
          Row{{31, 12}, {13, 7}, 3}, Row{{5, 3}, {5, 3}, 3}, Row{{19, 8}, {6, 3}, 4},
          Row{{23, 17}, {7, 5}, 1, false}, Row{{31, 12}, {13, 7}, 3, false},
          Row{{19, 8}, {6, 3}, 4, false}}) {
        const Noise of = noise(from, channels, isOpaque);
        AreaScaler scaler(from, to, channels);
        for (int y = 0; y < from.height(); ++y)
            isOpaque ? scaler.addRow(of.samples.row(y))
                     : scaler.addRow(of.samples.row(y), of.opacity.data() + y * from.width());
        const ImageSamples result = scaler.take();
        ASSERT_EQ(result.bytes.size(), static_cast<size_t>(pixelCount(to) * channels));
        for (int i = 0; i < int(result.bytes.size()); ++i) {
            const int x = i / channels % to.width(), y = i / channels / to.width();
            EXPECT_NEAR(result.bytes[size_t(i)], average(of, to, x, y, i % channels), 0.51)
                << channels << " channels, " << isOpaque << ": " << x << ' ' << y;
        }
    }
}

} // namespace folvane
