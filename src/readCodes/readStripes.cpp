#include "readCodes/readStripes.h"

#include "readCodes/geometry.h"
#include "readCodes/patches.h"
#include "readCodes/readByZbar.h"
#include "readCodes/readByZxing.h"

namespace folvane {

namespace {

bool isCovered(const Sightings& sightings, const cv::RotatedRect& place)
{
    return sightings.cover(place);
}

void readStripe(const Patch& patch, const cv::RotatedRect& place, Sightings& sightings)
{
    sightings.add(
        carriedBack(readByZxing(patch.grey, linearCodes, Threshold::Local, Turns::No), patch.toPicture),
        Library::Zxing);
    if (!isCovered(sightings, place))
        sightings.add(carriedBack(readByZbar(patch.grey, linearCodes | dataBarCodes), patch.toPicture),
                      Library::Zbar);
}

} // namespace

void readStripes(const cv::Mat& picture, const std::vector<cv::RotatedRect>& stripes, Sightings& sightings)
{
    for (const cv::RotatedRect& place : stripes)
        if (!isCovered(sightings, place))
            readStripe(stripToRead(picture, place), place, sightings);
}

} // namespace folvane
