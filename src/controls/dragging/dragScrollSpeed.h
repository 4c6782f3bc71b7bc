#pragma once

namespace folvane {

/// How fast an area of this height scrolls while something is dragged at `pointer` (from its top, in pixels), in pixels per second:
/// negative upwards, 0 away from its edges. The nearer to the edge and the longer it has been there, the faster.
double dragScrollSpeed(int pointer, int height, double seconds);

} // namespace folvane
