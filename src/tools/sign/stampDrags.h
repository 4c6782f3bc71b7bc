#pragma once

#include "records/StampPlacement.h"

#include <QSizeF>

namespace folvane {

// A stamp after it has been dragged from one point to another, on a page that is shown in `page`; `start` is how it lay before. Points
// are in the page's units, from its upper left corner.

/// Its centre stays on the page.
StampPlacement movedStamp(StampPlacement start, QSizeF page, QPointF from, QPointF to);

/// About its centre, by how much farther from it the second point is. A drag that begins within a unit of the centre does nothing.
StampPlacement resizedStamp(StampPlacement start, QSizeF page, QPointF from, QPointF to);

/// About its centre. Quarter turns pull from just under four degrees on each side.
StampPlacement turnedStamp(StampPlacement start, QSizeF page, QPointF from, QPointF to);

/// The width within what a drag can reach.
double reachableWidth(double width);

/// The same direction between -180 and 180 degrees.
double wrappedAngle(double degrees);

} // namespace folvane
