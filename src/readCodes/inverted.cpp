#include "readCodes/inverted.h"

#include "readCodes/doubled.h"
#include "readCodes/geometry.h"
#include "readCodes/readByZxing.h"
#include "readCodes/wholePicture.h"

namespace folvane {

void readInverted(const cv::Mat& picture, Sightings& sightings)
{
    const cv::Mat negative = 255 - picture;
    const Symbols symbols = isSmall(picture)
                                ? carriedBack(readByZxing(doubled(negative), matrixFamilies), fromScaled(2))
                                : readByZxing(negative, matrixFamilies);
    sightings.add(symbols, Library::Zxing);
}

} // namespace folvane
