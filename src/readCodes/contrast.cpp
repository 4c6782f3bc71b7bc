#include "readCodes/contrast.h"

#include <opencv2/imgproc.hpp>

#include <array>

namespace folvane {

namespace {

using Histogram = std::array<int, 256>;

Histogram histogramOf(const cv::Mat& grey)
{
    Histogram histogram{};
    for (int y = 0; y < grey.rows; ++y)
        for (const uchar* pixel = grey.ptr(y); pixel != grey.ptr(y) + grey.cols; ++pixel)
            ++histogram[*pixel];
    return histogram;
}

/// How many of the levels, from that end, hold less than so many pixels together.
template <typename Iterator>
int levelsWithin(Iterator level, Iterator end, double pixels)
{
    int levels = 0;
    for (int sum = 0; level != end && (sum += *level) < pixels; ++level)
        ++levels;
    return levels;
}

} // namespace

cv::Mat withFullContrast(const cv::Mat& grey)
{
    const Histogram histogram = histogramOf(grey);
    const double strays = 0.02 * double(grey.total());
    const int darkest = levelsWithin(histogram.begin(), histogram.end(), strays);
    const int range = 255 - levelsWithin(histogram.rbegin(), histogram.rend(), strays) - darkest;
    if (range < 12)
        return {};
    if (range >= 160) // as it is: clipping would widen dark modules
        return grey;
    cv::Mat spread;
    grey.convertTo(spread, -1, 255.0 / range, -darkest * 255.0 / range);
    return spread;
}

} // namespace folvane
