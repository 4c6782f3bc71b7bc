#include "pdf/images/decodingMemory.h"

#include "pdf/images/SampleRows.h"
#include "pictures/jpegSamples.h"

namespace folvane::pdf {

namespace {

int longSide(QSize size)
{
    return std::max(size.width(), size.height());
}

/// A row on its way through the decoder and the scaler, which has sums and weights for each of its pixels, and old rows
/// of a predictor.
qint64 rowMemory(const StoredImage& image)
{
    const SampleLayout layout{image.size, image.channels, image.bits, image.palette, image.paletteChannels};
    const qint64 summed = image.decodedChannels() + 1;
    const qint64 perPixel = image.channels + summed + qint64(sizeof(float)) * (2 * summed + 2);
    return 4 * layout.rowBytes() + image.size.width() * perPixel;
}

/// The library works on many rows at once, and keeps all coefficients of a picture in several scans.
qint64 jpegMemory(const StoredImage& image)
{
    constexpr qint64 rows = 32;
    const qint64 rowsOfSamples = rows * image.channels * image.size.width();
    if (!image.filters.empty())
        return rowsOfSamples + unpackedJpegLimit(image.bytes.size())
               + pixelCount(image.size) * image.channels * qint64(sizeof(int16_t));
    JpegStream jpeg(image.bytes, image.colourTransform);
    const std::optional<JpegShape> shape = jpeg.shape();
    return shape ? rows * shape->channels * shape->size.width() + jpeg.coefficientMemory().value_or(0) : 0;
}

/// The size at which a picture meets its mask.
int sideBeforeScaling(const StoredImage& image, int longest)
{
    const int side = longSide(image.size);
    switch (image.road) {
    case StoredImage::Road::Samples: return side;
    case StoredImage::Road::Jpeg: return std::max(std::min(side, 2 * longest), side / 8 + 1);
    case StoredImage::Road::Drawn: break;
    }
    return std::min(side, longest);
}

qint64 resultMemory(const StoredImage& image, QSize size)
{
    const qint64 channels = image.road == StoredImage::Road::Drawn ? 3 : image.decodedChannels();
    const qint64 perPixel = image.opacity ? channels + 2 * (channels + 1) : channels;
    return pixelCount(size) * perPixel;
}

} // namespace

qint64 decodingMemory(const StoredImage& image, int longest)
{
    const QSize result = sizeWithin(image.size, longest);
    qint64 bytes = resultMemory(image, result);
    if (image.opacity)
        bytes += decodingMemory(*image.opacity, sideBeforeScaling(image, longest));
    switch (image.road) {
    case StoredImage::Road::Samples: return bytes + rowMemory(image);
    case StoredImage::Road::Jpeg: return bytes + rowMemory(image) + jpegMemory(image);
    case StoredImage::Road::Drawn: break;
    }
    return bytes + image.drawingMemory + 3 * pixelCount(result); // the bitmap
}

qint64 storedMemory(const StoredImage& image)
{
    return image.bytes.size() + image.document.size() + (image.opacity ? storedMemory(*image.opacity) : 0);
}

} // namespace folvane::pdf
