#include "readCodes/readCandidates.h"

#include "readCodes/candidates.h"
#include "readCodes/contrast.h"
#include "readCodes/geometry.h"
#include "readCodes/patches.h"
#include "readCodes/readByZxing.h"
#include "readCodes/texture.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace folvane {

namespace {

/// Joins what print and grain broke up within a module.
cv::Mat blurred(const cv::Mat& grey)
{
    cv::Mat smooth;
    cv::GaussianBlur(grey, smooth, {}, 1.2);
    return smooth;
}

/// Whether the rim is darker than the rest, as the quiet zone of a bright code is.
bool isInverted(const cv::Mat& grey)
{
    const int rim = std::max(1, std::min(grey.cols, grey.rows) / 20);
    const cv::Mat inner = grey(cv::Rect(rim, rim, grey.cols - 2 * rim, grey.rows - 2 * rim));
    const double all = cv::sum(grey)[0], within = cv::sum(inner)[0];
    return (all - within) / double(grey.total() - inner.total()) < within / double(inner.total());
}

/// Each try costs about as much as all before it, so the first that reads anything is the last.
void readPatch(const Patch& patch, Families families, Sightings& sightings)
{
    const auto reads = [&](const cv::Mat& grey) {
        return sightings.add(carriedBack(readByZxing(grey, families), patch.toPicture), Library::Zxing);
    };
    if (reads(patch.grey))
        return;
    if ((families & dataMatrixCodes) != 0 && reads(blurred(patch.grey)))
        return;
    if (isInverted(patch.grey))
        reads(255 - patch.grey);
}

} // namespace

void readCandidates(const cv::Mat& picture, Sightings& sightings)
{
    for (const cv::RotatedRect& place : findCandidates(picture)) {
        if (sightings.cover(place))
            continue;
        const Families families = familiesFor(textureOf(patchToJudge(picture, place)), place);
        if (families == noFamily)
            continue;
        Patch patch = patchToRead(picture, place);
        patch.grey = withFullContrast(patch.grey);
        if (!patch.grey.empty())
            readPatch(patch, families, sightings);
    }
}

} // namespace folvane
