#include "readCodes/readBullseyes.h"

#include "readCodes/bullseyes.h"
#include "readCodes/geometry.h"
#include "readCodes/patches.h"
#include "readCodes/readByZxing.h"

namespace folvane {

namespace {

/// Enough for 150 letters. Larger codes are found as candidates.
constexpr float mostModules = 41;
constexpr double pixelsForModule = 6;

cv::RotatedRect placeAround(const Bullseye& bullseye)
{
    const float side = mostModules * float(bullseye.module);
    return {bullseye.middle, cv::Size2f(side, side), float(bullseye.angle)};
}

} // namespace

void readBullseyes(const cv::Mat& picture, Sightings& sightings)
{
    for (const Bullseye& bullseye : findBullseyes(picture)) {
        const Patch patch = patchAtScale(picture, placeAround(bullseye), pixelsForModule / bullseye.module);
        sightings.add(carriedBack(readByZxing(patch.grey, aztecCodes), patch.toPicture), Library::Zxing);
    }
}

} // namespace folvane
