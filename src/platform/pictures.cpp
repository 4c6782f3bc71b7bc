#include "platform/pictures.h"

#include "platform/colours.h"
#include "platform/heif.h"
#include "platform/jpeg.h"
#include "platform/orientation.h"
#include "platform/pictureEnds.h"
#include "platform/pictureTags.h"
#include "platform/svg.h"
#include "platform/tiffInks.h"
#include "platform/tiffTags.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>

#include <cmath>

namespace folvane {

namespace {

constexpr int bytesPerMegabyte = 1 << 20;

/// Qt's name of a format that its plugins read.
QByteArray nameForQt(PictureFormat format)
{
    switch (format) {
    case PictureFormat::Png: return "png";
    case PictureFormat::Gif: return "gif";
    case PictureFormat::Bmp: return "bmp";
    case PictureFormat::WebP: return "webp";
    case PictureFormat::Tiff: return "tiff";
    case PictureFormat::Icns: return "icns";
    case PictureFormat::Ico: return "ico";
    case PictureFormat::Pnm: return "ppm";
    default: return {};
    }
}

bool fits(const QSize& size)
{
    return !size.isValid() || qint64(size.width()) * size.height() <= maxBitmapBytes / 4;
}

/// Icon files hold the same picture in several sizes.
void goToLargest(QImageReader& reader)
{
    int largest = 0;
    QSize best = reader.size();
    for (int i = 1; i < reader.imageCount() && reader.jumpToImage(i); ++i) {
        const QSize size = reader.size();
        if (qint64(size.width()) * size.height() > qint64(best.width()) * best.height()) {
            largest = i;
            best = size;
        }
    }
    reader.jumpToImage(largest);
}

/// PNG writers say sRGB by a gamma of 1/2.2, the closest that the chunk for it can hold.
bool meansSrgb(const QColorSpace& space)
{
    return std::abs(space.gamma() - 2.2f) < 0.02f
           && space.withTransferFunction(QColorSpace::TransferFunction::SRgb)
                  == QColorSpace(QColorSpace::SRgb);
}

std::optional<TaggedImage> decodeByQt(const QByteArray& bytes, const QByteArray& format)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    if (format == "ico" || format == "icns")
        goToLargest(reader);
    if (!fits(reader.size()))
        return std::nullopt;
    const QImage image = reader.read();
    if (image.isNull())
        return std::nullopt;
    const QColorSpace space = image.colorSpace();
    return TaggedImage{image, meansSrgb(space) ? QByteArray() : space.iccProfile()};
}

/// Already in sRGB.
std::optional<QImage> decodeJpegFile(const QByteArray& bytes)
{
    const std::optional<JpegInfo> info = inspectJpeg(bytes);
    if (!info)
        return std::nullopt;
    if (info->components == 4) {
        const std::optional<InkSamples> cmyk = decodeCmykJpeg(bytes, 8);
        return cmyk ? std::optional(upright(toSrgb(*cmyk, info->iccProfile), info->orientation))
                    : std::nullopt;
    }
    const std::optional<QImage> image = decodeJpeg(bytes, 8);
    return image ? std::optional(upright(toSrgb(*image, info->iccProfile), info->orientation)) : std::nullopt;
}

std::optional<QImage> inSrgb(const std::optional<TaggedImage>& tagged)
{
    return tagged ? std::optional(toSrgb(tagged->image, tagged->iccProfile)) : std::nullopt;
}

std::optional<QImage> decodeQtFile(const QByteArray& bytes, PictureFormat format)
{
    if (!firstPictureIsComplete(bytes, format))
        return std::nullopt;
    std::optional<TaggedImage> tagged = decodeByQt(bytes, nameForQt(format));
    if (const QByteArray profile = profileInFile(bytes, format); tagged && !profile.isEmpty())
        tagged->iccProfile = profile;
    const std::optional<QImage> image = inSrgb(tagged);
    return image ? std::optional(upright(*image, orientationInFile(bytes, format))) : std::nullopt;
}

std::optional<QImage> decodeTiffFile(const QByteArray& bytes)
{
    const std::optional<InkSamples> inks = decodeTiffInks(bytes);
    if (!inks)
        return decodeQtFile(bytes, PictureFormat::Tiff);
    return upright(toSrgb(*inks, tiffProfile(bytes).toByteArray()), tiffOrientation(bytes));
}

std::optional<QImage> drawnInSrgb(const QByteArray& svg)
{
    const std::optional<QImage> image = drawSvg(svg, vectorLongSide);
    return image ? std::optional(image->convertToFormat(QImage::Format_RGBA8888)) : std::nullopt;
}

/// Already in sRGB.
std::optional<QImage> decodeFile(const QByteArray& bytes, const QString& extension)
{
    switch (const PictureFormat format = pictureFormat(bytes)) {
    case PictureFormat::Jpeg: return decodeJpegFile(bytes);
    case PictureFormat::Heif: return inSrgb(decodeHeif(bytes));
    case PictureFormat::Svg: return drawnInSrgb(bytes);
    case PictureFormat::Gzip: return isSvg(extension) ? drawnInSrgb(bytes) : std::nullopt;
    case PictureFormat::Unknown: return std::nullopt;
    case PictureFormat::Tiff: return decodeTiffFile(bytes);
    default: return decodeQtFile(bytes, format);
    }
}

bool isTransparentSomewhere(const QImage& image)
{
    if (image.format() != QImage::Format_RGBA8888)
        return false;
    for (int y = 0; y < image.height(); ++y) {
        const uchar* row = image.constScanLine(y);
        for (int x = 0; x < image.width(); ++x)
            if (row[4 * x + 3] != 255)
                return true;
    }
    return false;
}

Picture asPicture(QImage image)
{
    image.setColorSpace({});
    if (isTransparentSomewhere(image))
        return {image, true};
    const bool grey = image.format() == QImage::Format_Grayscale8 || image.allGray();
    return {image.convertToFormat(grey ? QImage::Format_Grayscale8 : QImage::Format_RGB888), false};
}

} // namespace

void preparePictureDecoding()
{
    QImageReader::setAllocationLimit(int(maxBitmapBytes / bytesPerMegabyte));
}

std::optional<Picture> decodePicture(const QByteArray& bytes, const QString& extension)
{
    const std::optional<QImage> image = decodeFile(bytes, extension);
    if (!image || image->isNull())
        return std::nullopt;
    return asPicture(*image);
}

bool isSvg(const QString& extension)
{
    const QString lower = extension.toLower();
    return lower == u"svg" || lower == u"svgz";
}

} // namespace folvane
