#include "readCodes/findCodes.h"

#include "readCodes/doubled.h"
#include "readCodes/filters.h"
#include "readCodes/halved.h"
#include "readCodes/inverted.h"
#include "readCodes/readBullseyes.h"
#include "readCodes/readCandidates.h"
#include "readCodes/readStripes.h"
#include "readCodes/stripes.h"
#include "readCodes/wholePicture.h"

namespace folvane {

// No library finds all codes, and each stage finds some that those before it do not: docs/codes.md tells how many. The later
// ones are dear and tried only where nothing was seen at all. The more is tried, the more is misread, which the filters take
// away at the end.
Symbols findCodes(const cv::Mat& picture)
{
    Sightings sightings;
    readWholePicture(picture, sightings);
    const std::vector<cv::RotatedRect> stripes = findStripes(picture);
    readStripes(picture, stripes, sightings);
    readBullseyes(picture, sightings);
    readCandidates(picture, sightings);
    if (sightings.empty() && isSmall(picture))
        readDoubled(picture, sightings);
    if (sightings.empty())
        readInverted(picture, sightings);
    if (sightings.empty())
        readHalved(picture, sightings);
    return credible(sightings.all(), stripes);
}

} // namespace folvane
