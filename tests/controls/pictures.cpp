#include "controls/pictures.h"

#include <cmath>

namespace folvane {

QImage picture(QWidget& widget, double scale)
{
    QImage image((QSizeF(widget.size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

QColor colorAt(const QImage& picture, const QPointF& place)
{
    const QPointF pixel = place * picture.devicePixelRatio();
    return picture.pixelColor(static_cast<int>(std::floor(pixel.x())),
                              static_cast<int>(std::floor(pixel.y())));
}

// Premultiplied: the colour of what is hardly there says nothing.
testing::AssertionResult alike(const QColor& one, const QColor& other, int tolerance)
{
    const QRgb a = qPremultiply(one.rgba());
    const QRgb b = qPremultiply(other.rgba());
    for (const int channel : {0, 8, 16, 24})
        if (std::abs(int(a >> channel & 0xff) - int(b >> channel & 0xff)) > tolerance)
            return testing::AssertionFailure() << qPrintable(one.name(QColor::HexArgb)) << " is not like "
                                               << qPrintable(other.name(QColor::HexArgb));
    return testing::AssertionSuccess();
}

} // namespace folvane
