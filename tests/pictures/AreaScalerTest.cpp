#include "pictures/AreaScaler.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace folvane::pdf {
namespace {

struct ScalerRow {
    const char* name;
    QSize from;
    QSize to;
    int channels;
    bool withOpacity;
};

void PrintTo(const ScalerRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class Scaling : public testing::TestWithParam<ScalerRow> {
protected:
    void SetUp() override
    {
        std::minstd_rand random(7);
        const auto pixels = static_cast<size_t>(pixelCount(row.from));
        samples.bytes.resize(pixels * static_cast<size_t>(row.channels));
        for (uint8_t& sample : samples.bytes)
            sample = static_cast<uint8_t>(random() % 256);
        opacity.resize(pixels, 255);
        for (uint8_t& value : opacity)
            value = row.withOpacity ? static_cast<uint8_t>(1 + random() % 255) : uint8_t(255);
    }

    /// The average over the area of a new pixel, pixel by pixel.
    double expected(int x, int y, int channel) const
    {
        const double wide = double(row.from.width()) / row.to.width();
        const double high = double(row.from.height()) / row.to.height();
        double sum = 0, weights = 0;
        for (int v = 0; v < row.from.height(); ++v) {
            for (int u = 0; u < row.from.width(); ++u) {
                const double across = std::min(u + 1.0, (x + 1) * wide) - std::max(double(u), x * wide);
                const double down = std::min(v + 1.0, (y + 1) * high) - std::max(double(v), y * high);
                const double weight = std::max(0.0, across) * std::max(0.0, down)
                                      * opacity[static_cast<size_t>(v * row.from.width() + u)];
                sum += weight * samples.row(v)[u * row.channels + channel];
                weights += weight;
            }
        }
        return sum / weights;
    }

    ScalerRow row = GetParam();
    ImageSamples samples{row.from, row.channels, {}};
    std::vector<uint8_t> opacity;
};

TEST_P(Scaling, AveragesTheAreaOfEachNewPixel)
{
    AreaScaler scaler(row.from, row.to, row.channels);
    for (int y = 0; y < row.from.height(); ++y) {
        if (row.withOpacity)
            scaler.addRow(samples.row(y), opacity.data() + y * row.from.width());
        else
            scaler.addRow(samples.row(y));
    }
    const ImageSamples result = scaler.take();
    ASSERT_EQ(result.bytes.size(), static_cast<size_t>(pixelCount(row.to) * row.channels));
    for (int y = 0; y < row.to.height(); ++y) {
        for (int i = 0; i < row.to.width() * row.channels; ++i)
            EXPECT_NEAR(result.row(y)[i], expected(i / row.channels, y, i % row.channels), 0.51)
                << i << ' ' << y;
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, Scaling,
                         testing::Values(ScalerRow{"Grey", {23, 17}, {7, 5}, 1, false},
                                         ScalerRow{"GreyToOnePixel", {9, 4}, {1, 1}, 1, false},
                                         ScalerRow{"Two", {23, 17}, {22, 17}, 2, false},
                                         ScalerRow{"Rgb", {31, 12}, {13, 7}, 3, false},
                                         ScalerRow{"RgbAsItIs", {5, 3}, {5, 3}, 3, false},
                                         ScalerRow{"Inks", {19, 8}, {6, 3}, 4, false},
                                         ScalerRow{"GreyWithMask", {23, 17}, {7, 5}, 1, true},
                                         ScalerRow{"RgbWithMask", {31, 12}, {13, 7}, 3, true},
                                         ScalerRow{"InksWithMask", {19, 8}, {6, 3}, 4, true}),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace folvane::pdf
