#include "stamps/stampPicture.h"

#include "pictures/AreaScaler.h"
#include "pictures/samplesOf.h"
#include "pictures/upright.h"

namespace folvane {

namespace {

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
