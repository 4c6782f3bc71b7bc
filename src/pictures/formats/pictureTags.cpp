#include "pictures/formats/pictureTags.h"

#include "pictures/formats/tiffTags.h"
#include "platform/files/inflate.h"

#include <QtEndian>

namespace folvane {

namespace {

constexpr qsizetype maxProfileBytes = 32 << 20;

/// How a format strings its chunks together: both have a name of four letters and a size of four bytes.
struct ChunkLayout {
    qsizetype first;   ///< where the first chunk starts
    bool sizeFirst;    ///< the size stands before the name, big-endian; else behind it, little-endian
    qsizetype trailer; ///< bytes behind the content
};

constexpr ChunkLayout pngChunks{8, true, 4};
constexpr ChunkLayout webpChunks{12, false, 0};

QByteArrayView chunk(QByteArrayView bytes, const ChunkLayout& layout, QByteArrayView wanted)
{
    for (qsizetype at = layout.first; at + 8 <= bytes.size();) {
        const char* head = bytes.data() + at;
        const qsizetype size =
            layout.sizeFirst ? qFromBigEndian<quint32>(head) : qFromLittleEndian<quint32>(head + 4);
        const QByteArrayView name = bytes.sliced(at + (layout.sizeFirst ? 4 : 0), 4);
        if (size > bytes.size() - at - 8)
            return {};
        if (name == wanted)
            return bytes.sliced(at + 8, size);
        at += 8 + size + layout.trailer + (layout.sizeFirst ? 0 : size % 2);
    }
    return {};
}

QByteArrayView withoutMarker(QByteArrayView exif)
{
    const QByteArrayView marker("Exif\0\0", 6); // some writers leave the marker of JPEG in front
    return exif.startsWith(marker) ? exif.sliced(marker.size()) : exif;
}

/// Behind a name, a zero, and the method of packing.
QByteArray pngProfile(QByteArrayView content)
{
    const qsizetype nameEnd = content.indexOf('\0');
    if (nameEnd < 0 || nameEnd + 2 > content.size())
        return {};
    return inflated(content.sliced(nameEnd + 2), maxProfileBytes);
}

} // namespace

int orientationInFile(QByteArrayView bytes, PictureFormat format)
{
    if (format == PictureFormat::Png)
        return exifOrientation(withoutMarker(chunk(bytes, pngChunks, "eXIf")));
    if (format == PictureFormat::WebP)
        return exifOrientation(withoutMarker(chunk(bytes, webpChunks, "EXIF")));
    if (format == PictureFormat::Tiff)
        return tiffOrientation(bytes, largestTiffDirectory(bytes));
    return 1;
}

QByteArray profileInFile(QByteArrayView bytes, PictureFormat format)
{
    if (format == PictureFormat::Png)
        return pngProfile(chunk(bytes, pngChunks, "iCCP"));
    if (format == PictureFormat::WebP)
        return chunk(bytes, webpChunks, "ICCP").toByteArray();
    if (format == PictureFormat::Tiff)
        return tiffProfile(bytes, largestTiffDirectory(bytes)).toByteArray();
    return {};
}

} // namespace folvane
