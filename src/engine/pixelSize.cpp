#include "engine/pixelSize.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace folvane {

QSize pixelSize(QSizeF points, double scale)
{
    const auto pixels = [scale](double side) {
        constexpr double most = std::numeric_limits<int>::max();
        return static_cast<int>(std::clamp(std::round(side * scale), 1.0, most));
    };
    return {pixels(points.width()), pixels(points.height())};
}

} // namespace folvane
