#include "pictures/pictures.h"

#include "pictures/colours.h"
#include "pictures/formats/heif.h"
#include "pictures/formats/pictureEnds.h"
#include "pictures/formats/pictureLimits.h"
#include "pictures/formats/pictureTags.h"
#include "pictures/formats/svg.h"
#include "pictures/formats/tiffInks.h"
#include "pictures/formats/tiffTags.h"
#include "pictures/jpeg.h"
#include "platform/files/SourceFile.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>

#include <algorithm>
#include <cmath>

namespace folvane {

namespace {

constexpr quint64 mostTiffSamples = 32; // a pixel; the library makes room for all of them, however many
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

/// With what becomes of it: of 16 bits a channel, a second bitmap of 8.
bool fits(const QSize& size, QImage::Format format)
{
    const bool deep = isDeep(format);
    const qint64 bytesPerPixel = deep ? 8 + 4 : 4, most = deep ? maxDecodingBytes : maxBitmapBytes;
    return !size.isValid() || qint64(size.width()) * size.height() <= most / bytesPerPixel;
}

/// Icon files hold the same picture in several sizes.
int largestPicture(QImageReader& reader)
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
    return largest;
}

/// PNG writers say sRGB by a gamma of 1/2.2, the closest that the chunk for it can hold.
bool meansSrgb(const QColorSpace& space)
{
    return std::abs(space.gamma() - 2.2f) < 0.02f
           && space.withTransferFunction(QColorSpace::TransferFunction::SRgb)
                  == QColorSpace(QColorSpace::SRgb);
}

/// Lets go of the bytes where there is a file to read them from.
std::unique_ptr<QIODevice> deviceFor(PictureBytes content, const std::stop_token& stop)
{
    if (content.file)
        return std::make_unique<SourceDevice>(std::move(content.file), stop);
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(content.bytes);
    buffer->open(QIODevice::ReadOnly);
    return buffer;
}

/// `index`: of the picture in its file, where that is known.
std::optional<TaggedImage> decodeByQt(QIODevice& device, const QByteArray& format, std::optional<int> index)
{
    QImageReader reader(&device, format);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(false);
    if (format == "ico" || format == "icns")
        index = largestPicture(reader);
    const bool isThere = !index || reader.jumpToImage(*index) || *index == 0;
    if (!isThere || !fits(reader.size(), reader.imageFormat()))
        return std::nullopt;
    QImage image = reader.read();
    if (image.isNull())
        return std::nullopt;
    const QColorSpace space = image.colorSpace();
    return TaggedImage{std::move(image), meansSrgb(space) ? QByteArray() : space.iccProfile()};
}

std::optional<Picture> inSrgb(std::optional<TaggedImage> tagged, int orientation, const std::stop_token& stop)
{
    if (!tagged)
        return std::nullopt;
    return Picture{toSrgb(std::move(tagged->image), tagged->iccProfile, stop), false, orientation};
}

std::optional<Picture> inSrgb(std::optional<InkSamples> inks, const QByteArray& profile, int orientation,
                              const std::stop_token& stop)
{
    return inks ? std::optional(Picture{toSrgb(std::move(*inks), profile, stop), false, orientation})
                : std::nullopt;
}

/// The fewest eighths of a length that are no less than `enough`.
int eighths(int length, std::optional<int> enough)
{
    return enough ? static_cast<int>(
                        std::clamp((8 * qint64(*enough) + length - 1) / length, qint64(1), qint64(8)))
                  : 8;
}

std::optional<Picture> decodeJpegFile(const QByteArray& bytes, const std::stop_token& stop,
                                      std::optional<int> enough)
{
    const std::optional<JpegInfo> info = inspectJpeg(bytes);
    if (!info)
        return std::nullopt;
    const int scale = eighths(std::max({info->width, info->height, 1}), enough);
    if (info->components == 4)
        return inSrgb(decodeCmykJpeg(bytes, scale, stop), info->iccProfile, info->orientation, stop);
    std::optional<QImage> image = decodeJpeg(bytes, scale, stop);
    if (!image)
        return std::nullopt;
    return inSrgb(TaggedImage{std::move(*image), info->iccProfile}, info->orientation, stop);
}

std::optional<Picture> decodeQtFile(PictureBytes content, PictureFormat format, std::optional<int> index,
                                    const std::stop_token& stop)
{
    if (!firstPictureIsComplete(content.bytes, format))
        return std::nullopt;
    const int orientation = orientationInFile(content.bytes, format);
    const QByteArray profile = profileInFile(content.bytes, format);
    const std::unique_ptr<QIODevice> device = deviceFor(std::move(content), stop);
    std::optional<TaggedImage> tagged = decodeByQt(*device, nameForQt(format), index);
    if (tagged && !profile.isEmpty())
        tagged->iccProfile = profile;
    return inSrgb(std::move(tagged), orientation, stop);
}

std::optional<Picture> decodeTiffFile(PictureBytes content, const std::stop_token& stop)
{
    const TiffDirectory largest = largestTiffDirectory(content.bytes);
    if (tiffSamplesPerPixel(content.bytes, largest) > mostTiffSamples)
        return std::nullopt;
    std::optional<InkSamples> inks = decodeTiffInks(content.bytes, largest.index, stop);
    if (!inks)
        return decodeQtFile(std::move(content), PictureFormat::Tiff, largest.index, stop);
    return inSrgb(std::move(inks), tiffProfile(content.bytes, largest).toByteArray(),
                  tiffOrientation(content.bytes, largest), stop);
}

std::optional<Picture> drawnInSrgb(const QByteArray& svg)
{
    const std::optional<QImage> image = drawSvg(svg, vectorLongSide);
    return image ? std::optional(Picture{image->convertToFormat(QImage::Format_RGBA8888)}) : std::nullopt;
}

/// Already in sRGB.
std::optional<Picture> decodeFile(PictureBytes content, const QString& extension, const std::stop_token& stop,
                                  std::optional<int> enough)
{
    switch (const PictureFormat format = pictureFormat(content.bytes)) {
    case PictureFormat::Jpeg: return decodeJpegFile(content.bytes, stop, enough);
    case PictureFormat::Heif: return inSrgb(decodeHeif(content.bytes), 1, stop);
    case PictureFormat::Svg: return drawnInSrgb(content.bytes);
    case PictureFormat::Gzip: return isSvg(extension) ? drawnInSrgb(content.bytes) : std::nullopt;
    case PictureFormat::Unknown: return std::nullopt;
    case PictureFormat::Tiff: return decodeTiffFile(std::move(content), stop);
    default: return decodeQtFile(std::move(content), format, std::nullopt, stop);
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

/// In the smallest format that shows it.
Picture reduced(Picture picture)
{
    picture.image.setColorSpace({});
    picture.hasAlpha = isTransparentSomewhere(picture.image);
    if (picture.hasAlpha)
        return picture;
    const bool grey = picture.image.format() == QImage::Format_Grayscale8 || picture.image.allGray();
    picture.image =
        std::move(picture.image).convertToFormat(grey ? QImage::Format_Grayscale8 : QImage::Format_RGB888);
    return picture;
}

} // namespace

void preparePictureDecoding()
{
    QImageReader::setAllocationLimit(int(maxBitmapBytes / bytesPerMegabyte));
}

std::optional<Picture> decodePicture(PictureBytes content, const QString& extension,
                                     const std::stop_token& stop, std::optional<int> enough)
{
    std::optional<Picture> picture = decodeFile(std::move(content), extension, stop, enough);
    if (!picture || picture->image.isNull() || stop.stop_requested())
        return std::nullopt;
    return reduced(std::move(*picture));
}

bool isSvg(const QString& extension)
{
    const QString lower = extension.toLower();
    return lower == u"svg" || lower == u"svgz";
}

} // namespace folvane
