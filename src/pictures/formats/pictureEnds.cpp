#include "pictures/formats/pictureEnds.h"

#include <QtEndian>

#include <cstdlib>

namespace folvane {

namespace {

template <typename Number>
Number littleAt(QByteArrayView bytes, qsizetype at)
{
    return at + qsizetype(sizeof(Number)) <= bytes.size() ? qFromLittleEndian<Number>(bytes.data() + at)
                                                          : Number(0);
}

int byteAt(QByteArrayView bytes, qsizetype at)
{
    return at < bytes.size() ? uchar(bytes[at]) : 0;
}

/// A packed picture says its size itself; that of others is rows of whole 32-bit words, of which the last may
/// lack what fills it up.
bool isCompleteBmp(QByteArrayView bytes)
{
    constexpr quint32 rle8 = 1, rle4 = 2;
    const qint64 pixelsAt = littleAt<quint32>(bytes, 10);
    const qint64 width = littleAt<qint32>(bytes, 18), height = std::abs(qint64(littleAt<qint32>(bytes, 22)));
    const quint32 packing = littleAt<quint32>(bytes, 30);
    if (packing == rle8 || packing == rle4)
        return pixelsAt + littleAt<quint32>(bytes, 34) <= bytes.size();
    const qint64 rowBytes = (width * littleAt<quint16>(bytes, 28) + 31) / 32 * 4;
    return rowBytes <= 0 || height <= (bytes.size() - pixelsAt + 3) / rowBytes; // no product: it can overflow
}

qsizetype paletteBytes(int flags)
{
    return flags & 0x80 ? 3 * (qsizetype(2) << (flags & 7)) : 0;
}

/// Behind a run of blocks, each with its length in front, the last one empty; nowhere when the run is cut
/// off.
qsizetype behindBlocks(QByteArrayView bytes, qsizetype at)
{
    while (at < bytes.size() && bytes[at] != 0)
        at += 1 + byteAt(bytes, at);
    return at < bytes.size() ? at + 1 : -1;
}

bool isCompleteGif(QByteArrayView bytes)
{
    constexpr qsizetype headerBytes = 13, imageHeaderBytes = 10;
    qsizetype at = headerBytes + paletteBytes(byteAt(bytes, 10));
    while (at >= 0 && byteAt(bytes, at) == '!')
        at = behindBlocks(bytes, at + 2);
    if (at < 0 || byteAt(bytes, at) != ',')
        return false;
    const qsizetype data = at + imageHeaderBytes + paletteBytes(byteAt(bytes, at + 9)) + 1;
    return behindBlocks(bytes, data) > 0;
}

} // namespace

bool firstPictureIsComplete(QByteArrayView bytes, PictureFormat format)
{
    if (format == PictureFormat::Bmp)
        return isCompleteBmp(bytes);
    if (format == PictureFormat::Gif)
        return isCompleteGif(bytes);
    return true;
}

} // namespace folvane
