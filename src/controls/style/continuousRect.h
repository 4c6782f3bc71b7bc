#pragma once

#include <QPainterPath>

namespace folvane {

/// A rectangle with continuous corners of `radius`: the curvature grows gradually from the straight side into
/// the corner instead of jumping to that of a circle. The curve begins 1.6 radii from the corner; where a side
/// is too short for that it gradually becomes a circle's, and a capsule at half the shorter side.
QPainterPath continuousRect(const QRectF& rect, double radius);

} // namespace folvane
