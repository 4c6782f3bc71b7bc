#include "readCodes/texture.h"

#include "readCodes/candidates.h"

namespace folvane {

namespace {

/// In pixels. It has at least 69 modules.
constexpr double leastPdf417Length = 100;

/// The sum of all changes over two pixels.
double changesAlong(const cv::Mat& patch)
{
    const int n = patch.cols;
    return cv::norm(patch.colRange(2, n), patch.colRange(0, n - 2), cv::NORM_L1);
}

/// A squat patch: any matrix code, PDF417 when it is not quite square, stripes.
Families squatFamilies(const Texture& texture, double aspect)
{
    Families families = noFamily;
    if (texture.stripes < 1.55)
        families |= aspect < 1.7 ? matrixFamilies : dataMatrixCodes;
    if (aspect > 1.15 && texture.stripes > 1.45 && texture.stripes < 7)
        families |= pdf417Codes;
    return families;
}

/// A long one: a rectangular Data Matrix, or PDF417.
Families longFamilies(const Texture& texture, double aspect)
{
    Families families = noFamily;
    if (texture.stripes > 0.6 && texture.stripes < 1.3 && aspect < 4.5)
        families |= dataMatrixCodes;
    if (texture.stripes > 1.3 && texture.stripes < 7)
        families |= pdf417Codes;
    return families;
}

} // namespace

Texture textureOf(const cv::Mat& patch)
{
    const double along = changesAlong(patch);
    const double across = changesAlong(patch.t());
    Texture texture{(along + 1) / (across + 1), (along + across) / (double(patch.total()) + 1)};
    if (texture.stripes < 0.5) // stripes that lie: the code is higher than it is wide
        texture.stripes = 1 / texture.stripes;
    return texture;
}

Families familiesFor(const Texture& texture, const cv::RotatedRect& place)
{
    constexpr double flat = 5;
    if (texture.energy < flat)
        return noFamily;
    const double aspect = aspectOf(place);
    const Families families = aspect < 2.6 ? squatFamilies(texture, aspect) : longFamilies(texture, aspect);
    return longSideOf(place) < leastPdf417Length ? families & ~pdf417Codes : families;
}

} // namespace folvane
