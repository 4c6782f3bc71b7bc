#include "stamps/paperBehind.h"

#include "stamps/inBands.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <memory>

namespace folvane {

namespace {

constexpr double radiusOfLongSide = 1.0 / 120;
constexpr double leastRadius = 3; // pixels
constexpr double blurOfRadius = 2;
constexpr int colours = 3;

using Shared = std::shared_ptr<ImageSamples>;

cv::Mat matOver(const Shared& picture)
{
    return {picture->size.height(), picture->size.width(), CV_8UC(picture->channels), picture->bytes.data()};
}

Shared blank(QSize size)
{
    return std::make_shared<ImageSamples>(
        ImageSamples{size, colours, std::vector<uint8_t>(static_cast<size_t>(pixelCount(size) * colours))});
}

Shared withoutAlpha(const ImageSamples& picture)
{
    const Shared result = blank(picture.size);
    const uint8_t* from = picture.bytes.data();
    for (auto to = result->bytes.begin(); to != result->bytes.end(); to += colours, from += picture.channels)
        std::copy_n(from, colours, to);
    return result;
}

/// The neighbourhood of a pixel: all whose centres lie within the radius.
cv::Mat disc(double radius)
{
    const int reach = static_cast<int>(radius);
    cv::Mat neighbours(2 * reach + 1, 2 * reach + 1, CV_8U);
    for (int y = -reach; y <= reach; ++y)
        for (int x = -reach; x <= reach; ++x)
            neighbours.at<uchar>(y + reach, x + reach) = x * x + y * y <= radius * radius;
    return neighbours;
}

/// A band of a matrix sees the rows beside it, so bands give what the whole would.
template <typename Filter> Shared filtered(const Shared& picture, const std::stop_token& stop, Filter filter)
{
    const Shared result = blank(picture->size);
    inBands(picture->size.height(), stop, [picture, result, filter](int first, int end) {
        cv::Mat to = matOver(result).rowRange(first, end);
        filter(matOver(picture).rowRange(first, end), to);
    });
    return result;
}

} // namespace

ImageSamples paperBehind(const ImageSamples& picture, const std::stop_token& stop)
{
    cv::setNumThreads(1); // the bands are spread over the cores already
    const int longSide = std::max(picture.size.width(), picture.size.height());
    const double radius = std::max(longSide * radiusOfLongSide, leastRadius);
    const auto brightest = [neighbours = disc(radius)](const cv::Mat& from, cv::Mat& to) {
        cv::dilate(from, to, neighbours);
    };
    const auto blurred = [deviation = blurOfRadius * radius](const cv::Mat& from, cv::Mat& to) {
        cv::GaussianBlur(from, to, {}, deviation, deviation, cv::BORDER_REPLICATE);
    };
    const Shared paper = filtered(withoutAlpha(picture), stop, brightest);
    return std::move(*filtered(paper, stop, blurred));
}

} // namespace folvane
