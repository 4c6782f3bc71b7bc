#include "readCodes/wholePicture.h"

#include "readCodes/readByZbar.h"
#include "readCodes/readByZxing.h"

#include <algorithm>

namespace folvane {

bool isSmall(const cv::Mat& picture)
{
    return std::max(picture.cols, picture.rows) < 1300;
}

void readWholePicture(const cv::Mat& picture, Sightings& sightings)
{
    const Families left = isSmall(picture) ? noFamily : aztecCodes | dataMatrixCodes;
    sightings.add(readByZxing(picture, zxingFamilies & ~left), Library::Zxing);
    if (isSmall(picture))
        sightings.add(readByZbar(picture), Library::Zbar);
}

} // namespace folvane
