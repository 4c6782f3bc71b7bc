#include "stamps/stampPicture.h"

#include "pictures/AreaScaler.h"
#include "pictures/samplesOf.h"

#include <QTransform>

namespace folvane {

namespace {

/// EXIF 1 to 8: 5 to 8 stand on their side, the even ones of the first four and the odd ones after them are mirrored.
QImage upright(const QImage& image, int orientation)
{
    switch (orientation) {
    case 2: return image.mirrored(true, false);
    case 3: return image.mirrored(true, true);
    case 4: return image.mirrored(false, true);
    case 5: return image.transformed(QTransform().rotate(90)).mirrored(true, false);
    case 6: return image.transformed(QTransform().rotate(90));
    case 7: return image.transformed(QTransform().rotate(-90)).mirrored(true, false);
    case 8: return image.transformed(QTransform().rotate(-90));
    default: return image;
    }
}

/// Strip by strip: the whole in four channels would take as much memory again.
ImageSamples premultiplied(const QImage& image, int longest)
{
    constexpr int strip = 64; // rows
    AreaScaler scaler(image.size(), sizeWithin(image.size(), longest), 4);
    for (int y = 0; y < image.height(); y += strip) {
        const QImage rows = image.copy(0, y, image.width(), std::min(strip, image.height() - y));
        scaler.addRows(viewOf(rows.convertToFormat(QImage::Format_RGBA8888_Premultiplied)));
    }
    return scaler.take();
}

} // namespace

std::optional<ImageSamples> stampPicture(PictureBytes content, const QString& extension, int longest,
                                         const std::stop_token& stop)
{
    const std::optional<Picture> picture = decodePicture(std::move(content), extension, stop, longest);
    if (!picture)
        return std::nullopt;
    ImageSamples pixels = premultiplied(picture->image, longest);
    if (picture->orientation == 1)
        return pixels;
    return premultiplied(upright(imageOf(std::move(pixels)), picture->orientation), longest);
}

} // namespace folvane
