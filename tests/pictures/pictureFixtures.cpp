#include "pictures/pictureFixtures.h"

#include <QBuffer>
#include <QFile>
#include <QPainter>
#include <QtEndian>

#include <zlib.h>

namespace folvane {

namespace {

constexpr qsizetype pngHeaderAt = 8, pngHeaderSize = 25;

template <typename Number>
QByteArray bigEndian(Number value)
{
    const Number ordered = qToBigEndian(value);
    return QByteArray(reinterpret_cast<const char*>(&ordered), sizeof ordered);
}

QByteArray pngChunk(const QByteArray& name, const QByteArray& content)
{
    const QByteArray body = name + content;
    const auto sum = crc32(0, reinterpret_cast<const Bytef*>(body.constData()), uInt(body.size()));
    return bigEndian(quint32(content.size())) + body + bigEndian(quint32(sum));
}

} // namespace

QImage fourFields(QImage::Format format, QSize size)
{
    QImage image(2, 2, QImage::Format_RGB32);
    const QRgb colours[] = {qRgb(255, 0, 0), qRgb(0, 255, 0), qRgb(0, 0, 255), qRgb(255, 255, 255)};
    for (int i = 0; i < 4; ++i)
        image.setPixel(i % 2, i / 2, colours[i]);
    return image.scaled(size).convertToFormat(format);
}

QImage plain(QColor colour, QImage::Format format, QSize size)
{
    QImage image(size, QImage::Format_RGBA64);
    image.fill(colour);
    return image.convertToFormat(format);
}

QByteArray encoded(const QImage& image, const char* format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, format, 100) ? bytes : QByteArray();
}

QByteArray sample(const QString& name)
{
    QFile file(QStringLiteral(FOLVANE_SAMPLE_PICTURES "/") + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("There is no sample %s.", qPrintable(name));
    return file.readAll();
}

QByteArray exifBlock(int orientation, bool isBigEndian)
{
    const auto value = quint16(orientation);
    const QByteArray block =
        isBigEndian ? QByteArray("MM\0*\0\0\0\x08\0\1\1\x12\0\3\0\0\0\1", 18) + bigEndian(value)
                    : QByteArray("II*\0\x08\0\0\0\1\0\x12\1\3\0\1\0\0\0", 18) + bigEndian(qbswap(value));
    return block + QByteArray(6, '\0');
}

QByteArray withJpegSegment(const QByteArray& jpeg, uchar marker, const QByteArray& content)
{
    const QByteArray head = QByteArray("\xFF") + char(marker) + bigEndian(quint16(content.size() + 2));
    return jpeg.first(2) + head + content + jpeg.sliced(2);
}

QByteArray withJpegExif(const QByteArray& jpeg, const QByteArray& block)
{
    return withJpegSegment(jpeg, 0xE1, QByteArray("Exif\0\0", 6) + block);
}

QByteArray withJpegProfile(const QByteArray& jpeg, const QByteArray& profile)
{
    constexpr qsizetype most = 1000; // far below what a segment holds, so that profiles come in parts
    const qsizetype parts = (profile.size() + most - 1) / most;
    QByteArray file = jpeg;
    for (qsizetype part = parts; part >= 1; --part)
        file = withJpegSegment(file, 0xE2,
                               QByteArray("ICC_PROFILE\0", 12) + char(part) + char(parts)
                                   + profile.mid((part - 1) * most, most));
    return file;
}

QByteArray withPngChunk(const QByteArray& png, const QByteArray& name, const QByteArray& content)
{
    constexpr qsizetype at = pngHeaderAt + pngHeaderSize;
    return png.first(at) + pngChunk(name, content) + png.sliced(at);
}

QByteArray withPngSize(QByteArray png, QSize size)
{
    const QByteArray rest = png.mid(pngHeaderAt + 16, 5);
    const QByteArray header = bigEndian(size.width()) + bigEndian(size.height()) + rest;
    return png.replace(pngHeaderAt, pngHeaderSize, pngChunk("IHDR", header));
}

QByteArray withPngProfile(const QByteArray& png, const QByteArray& profile)
{
    return withPngChunk(png, "iCCP", QByteArray("p\0\0", 3) + qCompress(profile).sliced(4));
}

} // namespace folvane
