#pragma once

#include "records/StampPlacement.h"

#include <QSizeF>

#include <algorithm>

namespace folvane {

/// Where a stamp lies on a page as shown: in the page's units, from its upper left corner, y downwards.
struct StampBox {
    QPointF center;
    QSizeF size;
    double rotation = 0; ///< degrees, clockwise on the screen, about the centre
};

/// `page`: as shown. The height follows from the picture's shape.
inline StampBox stampBox(const StampPlacement& placement, QSizeF page, QSizeF picture)
{
    const double width = placement.width * page.width();
    const double aspect = std::max(picture.width() / std::max(picture.height(), 1.0), 0.001);
    return {{placement.center.x() * page.width(), placement.center.y() * page.height()},
            {width, width / aspect},
            placement.rotation};
}

} // namespace folvane
