#pragma once

#include <QRectF>
#include <QSizeF>

namespace folvane::pdf {

/// What decides how a page is shown: its crop box within its media box, in points, and its own rotation.
struct PageGeometry {
    QRectF cropBox;   ///< x and y are the lower left corner in the page's own space
    int rotation = 0; ///< 0, 90, 180 or 270

    bool operator==(const PageGeometry&) const = default;

    /// Size in points as shown after a further `turn` in degrees.
    QSizeF displaySize(int turn) const;
};

/// Any sum of angles brought into 0..359.
int normalisedAngle(int degrees);

} // namespace folvane::pdf
