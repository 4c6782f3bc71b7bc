#include "readCodes/readCandidates.h"

#include "readCodes/candidates.h"
#include "readCodes/contrast.h"
#include "readCodes/geometry.h"
#include "readCodes/patches.h"
#include "readCodes/readByZbar.h"
#include "readCodes/readByZxing.h"
#include "readCodes/texture.h"

#include <opencv2/imgproc.hpp>

namespace folvane {

namespace {

/// Joins what print and grain broke up within a module.
cv::Mat blurred(const cv::Mat& grey)
{
    cv::Mat smooth;
    cv::GaussianBlur(grey, smooth, {}, 1.2);
    return smooth;
}

/// Each try costs about as much as all before it, so the first that reads anything is the last.
void readPatch(const Patch& patch, Families families, Sightings& sightings)
{
    const auto reads = [&](const Symbols& symbols, Library library) {
        return sightings.add(carriedBack(symbols, patch.toPicture), library);
    };
    if (reads(readByZxing(patch.grey, families), Library::Zxing))
        return;
    const bool isMatrix = (families & dataMatrixCodes) != 0;
    if (isMatrix && reads(readByZxing(blurred(patch.grey), matrixFamilies), Library::Zxing))
        return;
    if (reads(readByZxing(255 - patch.grey, isMatrix ? families | matrixFamilies : families), Library::Zxing))
        return;
    if (families & linearCodes)
        reads(readByZbar(patch.grey, linearCodes | dataBarCodes, 3), Library::Zbar);
}

} // namespace

void readCandidates(const cv::Mat& picture, Sightings& sightings)
{
    for (const cv::RotatedRect& place : findCandidates(picture)) {
        if (sightings.cover(place))
            continue;
        const Families families = familiesFor(textureOf(patchToJudge(picture, place)), aspectOf(place));
        if (families == noFamily)
            continue;
        Patch patch = patchToRead(picture, place);
        patch.grey = withFullContrast(patch.grey);
        if (!patch.grey.empty())
            readPatch(patch, families, sightings);
    }
}

} // namespace folvane
