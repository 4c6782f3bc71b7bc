#include "pictures/AreaScaler.h"

#include <gtest/gtest.h>

namespace folvane {

struct ScalingCase {
    const char* name;
    QSize from, to;
    int channels;
    std::vector<uint8_t> samples, want;
    std::vector<uint8_t> opacity = {};
};

class Scaling : public testing::TestWithParam<ScalingCase> {};

TEST_P(Scaling, AveragesTheAreaOfEachNewPixel)
{
    const ScalingCase& row = GetParam();
    AreaScaler scaler(row.from, row.to, row.channels);
    for (int y = 0; y < row.from.height(); ++y) {
        const qsizetype at = qsizetype(y) * row.from.width();
        const uint8_t* samples = row.samples.data() + at * row.channels;
        row.opacity.empty() ? scaler.addRow(samples) : scaler.addRow(samples, row.opacity.data() + at);
    }
    EXPECT_EQ(scaler.take().bytes, row.want);
}

const ScalingCase scalings[] = {
    {"SameSize", {2, 1}, {2, 1}, 1, {7, 201}, {7, 201}},
    {"WholePixels", {4, 2}, {2, 1}, 1, {0, 101, 200, 100, 100, 200, 0, 101}, {100, 100}},
    {"HalvesAcross", {5, 1}, {2, 1}, 1, {10, 20, 30, 40, 50}, {18, 42}},
    {"PartsAtBothEnds", {5, 1}, {3, 1}, 1, {0, 50, 100, 150, 200}, {20, 100, 180}},
    {"HalvesDown", {1, 5}, {1, 2}, 1, {10, 20, 30, 40, 50}, {18, 42}},
    {"Quarters", {3, 3}, {2, 2}, 1, {0, 60, 120, 30, 90, 150, 60, 120, 180}, {30, 110, 70, 150}},
    {"TwoChannels", {3, 1}, {2, 1}, 2, {0, 255, 120, 135, 240, 15}, {40, 215, 200, 55}},
    {"Colours", {3, 1}, {2, 1}, 3, {0, 255, 9, 120, 135, 9, 240, 15, 9}, {40, 215, 9, 200, 55, 9}},
    {"Inks", {2, 1}, {1, 1}, 4, {10, 20, 30, 40, 50, 60, 70, 80}, {30, 40, 50, 60}},
    {"Veiled", {2, 1}, {1, 1}, 1, {100, 200}, {125}, {255, 85}},
    {"VeiledColours", {2, 1}, {1, 1}, 3, {100, 0, 200, 200, 40, 100}, {125, 10, 175}, {255, 85}},
    {"VeiledInks", {1, 2}, {1, 1}, 4, {0, 80, 4, 8, 40, 0, 4, 48}, {10, 60, 4, 18}, {255, 85}}};

INSTANTIATE_TEST_SUITE_P(Rows, Scaling, testing::ValuesIn(scalings),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace folvane
