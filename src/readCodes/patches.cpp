#include "readCodes/patches.h"

#include "readCodes/candidates.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace folvane {

namespace {

cv::RotatedRect lying(cv::RotatedRect place)
{
    if (place.size.width < place.size.height) {
        std::swap(place.size.width, place.size.height);
        place.angle += 90;
    }
    return place;
}

/// With a rim of so much of the width on each side, hardly less for flat ones, and so many pixels more.
cv::RotatedRect withRim(cv::RotatedRect place, float share, float pixels)
{
    const float height =
        place.size.height + 2 * share * std::min(place.size.width, place.size.height * 2) + 2 * pixels;
    place.size = {place.size.width * (1 + 2 * share) + 2 * pixels, height};
    return place;
}

cv::Size scaledSize(const cv::RotatedRect& place, double scale)
{
    const auto pixels = [scale](float length) {
        return std::max(8, int(std::lround(double(length) * scale)));
    };
    return {pixels(place.size.width), pixels(place.size.height)};
}

/// From pixels of a patch of that size to pixels of the picture.
cv::Matx23d placing(const cv::RotatedRect& place, cv::Size size, double scale)
{
    const double angle = double(place.angle) * CV_PI / 180;
    const double across = std::cos(angle) / scale;
    const double down = std::sin(angle) / scale;
    return {across, -down,  double(place.center.x) - across * size.width / 2 + down * size.height / 2,
            down,   across, double(place.center.y) - down * size.width / 2 - across * size.height / 2};
}

cv::Rect neighbourhood(const cv::RotatedRect& place, cv::Size picture)
{
    const cv::Rect box = place.boundingRect();
    const int rim = std::max(box.width, box.height) / 4 + 8;
    return cv::Rect(box.x - rim, box.y - rim, box.width + 2 * rim, box.height + 2 * rim)
           & cv::Rect({}, picture);
}

cv::Mat sampled(const cv::Mat& picture, const cv::Matx23d& toPicture, cv::Size size, int interpolation)
{
    cv::Mat grey;
    cv::warpAffine(picture, grey, toPicture, size, interpolation | cv::WARP_INVERSE_MAP,
                   cv::BORDER_REPLICATE);
    return grey;
}

/// Blurred first, lest fine modules turn into coarse ones that are not there.
cv::Mat shrunk(const cv::Mat& picture, const cv::RotatedRect& place, cv::Matx23d toPicture, cv::Size size,
               double scale)
{
    const cv::Rect around = neighbourhood(place, picture.size());
    cv::Mat blurred;
    cv::GaussianBlur(picture(around), blurred, {}, 0.4 / scale);
    toPicture(0, 2) -= around.x;
    toPicture(1, 2) -= around.y;
    return sampled(blurred, toPicture, size, cv::INTER_LINEAR);
}

double readingScale(double longSide)
{
    return longSide < 130 ? 3 : longSide < 260 ? 2 : longSide < 700 ? 1 : 700 / longSide;
}

} // namespace

Patch patchAtScale(const cv::Mat& picture, const cv::RotatedRect& place, double scale)
{
    const cv::Size size = scaledSize(place, scale);
    const cv::Matx23d toPicture = placing(place, size, scale);
    if (scale < 0.75 && !neighbourhood(place, picture.size()).empty())
        return {shrunk(picture, place, toPicture, size, scale), toPicture};
    return {sampled(picture, toPicture, size, scale > 1 ? cv::INTER_CUBIC : cv::INTER_LINEAR), toPicture};
}

Patch patchToRead(const cv::Mat& picture, const cv::RotatedRect& place)
{
    return patchAtScale(picture, withRim(lying(place), 0.1F, 4), readingScale(longSideOf(place)));
}

Patch stripToRead(const cv::Mat& picture, const cv::RotatedRect& place)
{
    constexpr float most = 48, least = 12;
    cv::RotatedRect strip = place;
    strip.size.width = place.size.width * 1.3F + 20;
    strip.size.height = std::clamp(place.size.height * 0.7F, least, most);
    const double scale = strip.size.width < 700    ? 2
                         : strip.size.width < 1400 ? 1
                                                   : 1400.0 / double(strip.size.width);
    const cv::Size size = scaledSize(strip, scale);
    const cv::Matx23d toPicture = placing(strip, size, scale);
    cv::Mat grey = sampled(picture, toPicture, size, cv::INTER_LINEAR);
    cv::GaussianBlur(grey, grey, {}, 0.75 * scale); // less than a module, more than the grain of print
    return {grey, toPicture};
}

cv::Mat patchToJudge(const cv::Mat& picture, const cv::RotatedRect& place)
{
    const double scale = std::min(1.0, 240 / longSideOf(place));
    const cv::RotatedRect inner = withRim(lying(place), -0.05F, 0);
    const cv::Size size = scaledSize(inner, scale);
    cv::Mat smooth;
    cv::blur(sampled(picture, placing(inner, size, scale), size, cv::INTER_LINEAR), smooth, {3, 3});
    return smooth;
}

} // namespace folvane
