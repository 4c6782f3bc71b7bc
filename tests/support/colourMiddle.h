#pragma once

#include <QColor>
#include <QImage>
#include <QList>

#include <algorithm>
#include <cstdlib>

namespace folvane {

inline bool isAlmost(QRgb pixel, QRgb colour)
{
    return std::abs(qRed(pixel) - qRed(colour)) < 60 && std::abs(qGreen(pixel) - qGreen(colour)) < 60
           && std::abs(qBlue(pixel) - qBlue(colour)) < 60;
}

/// Calls `use` with the place of each pixel of these colours.
template <typename Use>
void forEachPixelOf(const QImage& image, const QList<QColor>& colours, Use use)
{
    const QImage pixels = image.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < pixels.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(pixels.constScanLine(y));
        for (int x = 0; x < pixels.width(); ++x)
            if (std::ranges::any_of(colours, [&](const QColor& one) { return isAlmost(row[x], one.rgb()); }))
                use(QPoint(x, y));
    }
}

/// The middle of all pixels of these colours, as fractions of the picture.
inline QPointF middle(const QImage& image, const QList<QColor>& colours)
{
    QPointF sum;
    int count = 0;
    forEachPixelOf(image, colours, [&](const QPoint& place) {
        sum += place + QPointF(0.5, 0.5);
        ++count;
    });
    return {sum.x() / count / image.width(), sum.y() / count / image.height()};
}

} // namespace folvane
