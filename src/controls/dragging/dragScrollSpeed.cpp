#include "controls/dragging/dragScrollSpeed.h"

#include <algorithm>
#include <cmath>

namespace folvane {

namespace {

constexpr int widestZone = 48;        // pixels at either edge
constexpr double steepShare = 0.75;   // of the zone; nearer than that is as good as at the edge
constexpr double slowest = 40;        // pixels per second
constexpr double atEdge = 360;        // on top of that, at the edge itself
constexpr double doublingTime = 0.35; // seconds
constexpr double fastest = 100000;    // thousands of pages pass in seconds

} // namespace

double dragScrollSpeed(int pointer, int height, double seconds)
{
    const int zone = std::min(widestZone, height / 4);
    const int above = zone - pointer;
    const int below = pointer - (height - 1 - zone);
    const int depth = std::max(above, below);
    if (depth <= 0)
        return 0;
    const double nearness = std::min(1.0, depth / (steepShare * zone));
    const double atFirst = slowest + atEdge * nearness * nearness;
    const double speed = std::min(fastest, atFirst * std::exp2(nearness * seconds / doublingTime));
    return above > below ? -speed : speed;
}

} // namespace folvane
