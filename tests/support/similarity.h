#pragma once

#include <QImage>

#include <algorithm>
#include <cstdlib>

namespace folvane {

/// The largest difference of the mean colours of the cells of a grid over two pictures: it finds a picture that is
/// shifted, inverted or in other colours, whatever noise there is, and with
/// small cells one that is blurred. 255 when one is null.
inline int largestCellDifference(const QImage& first, const QImage& second, int cells = 8)
{
    if (first.isNull() || second.isNull())
        return 255;
    const auto averaged = [cells](const QImage& image) {
        return image.convertToFormat(QImage::Format_RGB32)
            .scaled(cells, cells, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .convertToFormat(QImage::Format_RGB888);
    };
    const QImage a = averaged(first), b = averaged(second);
    int most = 0;
    for (int y = 0; y < cells; ++y) {
        for (int x = 0; x < 3 * cells; ++x)
            most = std::max(most, std::abs(a.constScanLine(y)[x] - b.constScanLine(y)[x]));
    }
    return most;
}

} // namespace folvane
