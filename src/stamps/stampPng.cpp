#include "stamps/stampPng.h"

#include <QBuffer>
#include <QColorSpace>

namespace folvane {

QByteArray pngOf(const QImage& image)
{
    QImage straight = image.convertToFormat(QImage::Format_RGBA8888);
    straight.setColorSpace(QColorSpace::SRgb);
    QByteArray png;
    QBuffer buffer(&png);
    return buffer.open(QIODevice::WriteOnly) && straight.save(&buffer, "PNG") ? png : QByteArray();
}

} // namespace folvane
