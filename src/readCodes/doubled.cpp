#include "readCodes/doubled.h"

#include "readCodes/geometry.h"
#include "readCodes/readByZxing.h"

#include <opencv2/imgproc.hpp>

namespace folvane {

namespace {

cv::Mat sharpened(const cv::Mat& picture)
{
    cv::Mat blurred;
    cv::GaussianBlur(picture, blurred, {}, 1.5);
    cv::Mat sharp;
    cv::addWeighted(picture, 2.5, blurred, -1.5, 0, sharp);
    return sharp;
}

} // namespace

cv::Mat doubled(const cv::Mat& picture)
{
    cv::Mat large;
    cv::resize(picture, large, {}, 2, 2, cv::INTER_CUBIC);
    return large;
}

void readDoubled(const cv::Mat& picture, Sightings& sightings)
{
    const cv::Mat large = doubled(picture);
    sightings.add(carriedBack(readByZxing(large, zxingFamilies, Threshold::Global), fromScaled(2)),
                  Library::Zxing);
    sightings.add(carriedBack(readByZxing(sharpened(large), zxingFamilies), fromScaled(2)), Library::Zxing);
}

} // namespace folvane
