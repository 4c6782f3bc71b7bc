#include "viewParts/stampsOn.h"

#include "stamps/StampPictures.h"

namespace folvane {

QList<StampPicture> stampsOn(const PageItem& page, double pageWidth, StampPictures& pictures)
{
    QList<StampPicture> stamps;
    for (const StampPlacement& one : page.stamps)
        stamps.append(
            {one, pictures.sizeOf(one.stampID), pictures.atLeast(one.stampID, one.width * pageWidth)});
    return stamps;
}

} // namespace folvane
