#include "readCodes/texture.h"

#include "readCodes/candidates.h"

#include <opencv2/imgproc.hpp>

namespace folvane {

namespace {

/// The sum of all changes over two pixels.
double changesAlong(const cv::Mat& patch)
{
    const int n = patch.cols;
    return cv::norm(patch.colRange(2, n), patch.colRange(0, n - 2), cv::NORM_L1);
}

double darkShareOf(const cv::Mat& patch)
{
    cv::Mat dark;
    cv::threshold(patch, dark, 0, 1, cv::THRESH_BINARY_INV | cv::THRESH_OTSU);
    return double(cv::countNonZero(dark)) / double(patch.total());
}

bool mayBePdf417(const Texture& texture, const cv::RotatedRect& place)
{
    constexpr double leastLength = 100; // pixels; it has at least 69 modules
    return longSideOf(place) > leastLength && texture.stripes > 1.3 && texture.stripes < 7
           && texture.darkness > 0.37 && texture.darkness < 0.63;
}

/// A long one can be a rectangular Data Matrix, a squat one any of them.
Families matrixFamiliesFor(const Texture& texture, double aspect)
{
    if (texture.darkness < 0.28 || texture.darkness > 0.72)
        return noFamily;
    if (aspect > 2.6)
        return texture.stripes > 0.6 && texture.stripes < 1.3 && aspect < 4.5 ? dataMatrixCodes : noFamily;
    if (texture.stripes > 1.55)
        return noFamily;
    return aspect < 1.7 ? matrixFamilies : dataMatrixCodes;
}

} // namespace

Texture textureOf(const cv::Mat& patch)
{
    const double along = changesAlong(patch);
    const double across = changesAlong(patch.t());
    Texture texture{(along + 1) / (across + 1), (along + across) / (double(patch.total()) + 1),
                    darkShareOf(patch)};
    if (texture.stripes < 0.5) // stripes that lie: the code is higher than it is wide
        texture.stripes = 1 / texture.stripes;
    return texture;
}

Families familiesFor(const Texture& texture, const cv::RotatedRect& place)
{
    constexpr double flat = 5;
    if (texture.energy < flat)
        return noFamily;
    return matrixFamiliesFor(texture, aspectOf(place))
           | (mayBePdf417(texture, place) ? pdf417Codes : noFamily);
}

} // namespace folvane
