#include "pictures/formats/pictureFormat.h"

#include <algorithm>
#include <array>

namespace folvane {

namespace {

// How far into a text an <svg> element is looked for: before it stand comments and licences.
constexpr qsizetype svgHeadBytes = 64 * 1024;

struct Signature {
    qsizetype offset;
    QByteArrayView bytes;
    PictureFormat format;
};

template <size_t N>
constexpr QByteArrayView raw(const char (&text)[N])
{
    return QByteArrayView(text, N - 1); // zeros count
}

const std::array signatures{
    Signature{0, raw("\xFF\xD8\xFF"), PictureFormat::Jpeg},
    Signature{0, raw("\x89PNG\r\n\x1A\n"), PictureFormat::Png},
    Signature{0, raw("GIF87a"), PictureFormat::Gif},
    Signature{0, raw("GIF89a"), PictureFormat::Gif},
    Signature{8, raw("WEBPVP8"), PictureFormat::WebP},
    Signature{0, raw("II*\0"), PictureFormat::Tiff},
    Signature{0, raw("MM\0*"), PictureFormat::Tiff},
    Signature{0, raw("II+\0"), PictureFormat::Tiff},
    Signature{0, raw("MM\0+"), PictureFormat::Tiff},
    Signature{0, raw("icns"), PictureFormat::Icns},
    Signature{0, raw("\0\0\1\0"), PictureFormat::Ico},
    Signature{4, raw("ftyp"), PictureFormat::Heif},
    Signature{0, raw("BM"), PictureFormat::Bmp},
    Signature{0, raw("\x1F\x8B"), PictureFormat::Gzip},
};

bool isPnm(QByteArrayView bytes)
{
    return bytes.size() > 2 && bytes[0] == 'P' && bytes[1] >= '1' && bytes[1] <= '6'
           && QByteArrayView(" \t\r\n#").contains(bytes[2]);
}

bool isSvgText(QByteArrayView bytes)
{
    const QByteArrayView head = bytes.first(std::min(bytes.size(), svgHeadBytes));
    const QByteArrayView text = head.startsWith("\xEF\xBB\xBF") ? head.sliced(3) : head;
    return text.trimmed().startsWith('<') && (text.contains("<svg") || text.contains(":svg"));
}

} // namespace

PictureFormat pictureFormat(QByteArrayView bytes)
{
    for (const Signature& signature : signatures)
        if (bytes.size() > signature.offset && bytes.sliced(signature.offset).startsWith(signature.bytes))
            return signature.format;
    if (isPnm(bytes))
        return PictureFormat::Pnm;
    return isSvgText(bytes) ? PictureFormat::Svg : PictureFormat::Unknown;
}

} // namespace folvane
