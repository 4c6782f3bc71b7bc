#include "readCodes/halved.h"

#include "readCodes/geometry.h"
#include "readCodes/readByZbar.h"
#include "readCodes/readByZxing.h"
#include "readCodes/wholePicture.h"

#include <opencv2/imgproc.hpp>

namespace folvane {

void readHalved(const cv::Mat& picture, Sightings& sightings)
{
    if (std::min(picture.cols, picture.rows) < 2)
        return;
    cv::Mat small;
    cv::resize(picture, small, {}, 0.5, 0.5, cv::INTER_AREA);
    sightings.add(carriedBack(readByZxing(small, zxingFamilies), fromScaled(0.5)), Library::Zxing);
    if (isSmall(picture))
        sightings.add(carriedBack(readByZbar(small), fromScaled(0.5)), Library::Zbar);
}

} // namespace folvane
