#include "pdf/madeImages.h"

#include <QFile>
#include <QTemporaryDir>

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include <jpeglib.h>
#include <tiffio.h>

#include <algorithm>
#include <memory>

namespace folvane::pdf {

namespace {

/// 0 to 1.
double shade(double u, double v, int channel)
{
    const bool inDisc = std::hypot(u - 0.7, v - 0.35) < 0.18;
    switch (channel) {
    case 0: return inDisc ? 0.9 : 0.5 + 0.4 * std::sin(4 * u + 2 * v);
    case 1: return inDisc ? 0.25 : 0.2 + 0.6 * u * v + 0.1 * std::sin(20 * v);
    case 2: return inDisc ? 0.1 : 0.8 - 0.6 * v + 0.1 * std::cos(15 * u * v);
    default: return 0.1 + 0.2 * v;
    }
}

/// -0.04 to 0.04, the same at every call.
double noise(int x, int y, int channel)
{
    auto state = static_cast<uint32_t>(x) * 73856093U ^ static_cast<uint32_t>(y) * 19349663U
                 ^ (static_cast<uint32_t>(channel + 1) * 83492791U);
    state = (state ^ (state >> 13)) * 1274126177U;
    return (static_cast<double>((state >> 16) & 255) / 255 - 0.5) * 0.08;
}

int sample(QSize size, int x, int y, int channel, int most)
{
    const double value =
        shade(double(x) / size.width(), double(y) / size.height(), channel) + noise(x, y, channel);
    return static_cast<int>(std::lround(std::clamp(value, 0.0, 1.0) * most));
}

int dithered(QSize size, int x, int y, int channel)
{
    const double threshold = 0.5 + noise(x, y, channel + 4) * 11;
    return sample(size, x, y, channel, 255) > 255 * threshold;
}

void addBits(QByteArray& bytes, qsizetype& at, int value, int count)
{
    for (int bit = count - 1; bit >= 0; --bit, ++at) {
        if (at % 8 == 0)
            bytes.append('\0');
        bytes.back() = static_cast<char>(bytes.back() | (value >> bit & 1) << (7 - at % 8));
    }
}

void setStyle(jpeg_compress_struct& codec, JpegStyle style)
{
    if (style == JpegStyle::PlainRgb) {
        jpeg_set_colorspace(&codec, JCS_RGB);
        for (int i = 0; i < 3; ++i)
            codec.comp_info[i].component_id = i + 1; // not the letters by which decoders would know it
    }
    if (style == JpegStyle::Ycck)
        jpeg_set_colorspace(&codec, JCS_YCCK);
    codec.write_Adobe_marker = style == JpegStyle::MarkedInks || style == JpegStyle::Ycck;
}

} // namespace

QByteArray madePhoto(QSize size, int channels)
{
    return packedPhoto(size, channels, 8);
}

QByteArray packedPhoto(QSize size, int channels, int bits)
{
    QByteArray bytes;
    for (int y = 0; y < size.height(); ++y) {
        qsizetype at = 8 * bytes.size();
        for (int x = 0; x < size.width(); ++x) {
            for (int c = 0; c < channels; ++c) {
                const int most = (1 << bits) - 1;
                addBits(bytes, at, bits == 1 ? dithered(size, x, y, c) : sample(size, x, y, c, most), bits);
            }
        }
    }
    return bytes;
}

QByteArray deflatedBytes(const QByteArray& bytes)
{
    return qCompress(bytes).mid(4); // Qt puts the length before it
}

QByteArray lzwBytes(const QByteArray& bytes)
{
    constexpr int clear = 256, end = 257;
    QByteArray packed;
    qsizetype at = 0;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if (i % 200 == 0)
            addBits(packed, at, clear, 9);
        addBits(packed, at, static_cast<unsigned char>(bytes[i]), 9);
    }
    addBits(packed, at, end, 9);
    return packed;
}

QByteArray runLengthBytes(const QByteArray& bytes)
{
    QByteArray packed;
    for (qsizetype i = 0; i < bytes.size(); i += 128) {
        const QByteArray run = bytes.mid(i, 128);
        packed.append(static_cast<char>(run.size() - 1));
        packed += run;
    }
    return packed + '\x80';
}

QByteArray group4Bytes(const QByteArray& rows, QSize size)
{
    const QTemporaryDir folder;
    const QByteArray path = QFile::encodeName(folder.filePath("bitmap.tif"));
    TIFF* tiff = TIFFOpen(path.constData(), "w");
    for (const auto& [tag, value] : {std::pair(TIFFTAG_IMAGEWIDTH, size.width()),
                                     {TIFFTAG_IMAGELENGTH, size.height()},
                                     {TIFFTAG_ROWSPERSTRIP, size.height()},
                                     {TIFFTAG_BITSPERSAMPLE, 1},
                                     {TIFFTAG_SAMPLESPERPIXEL, 1},
                                     {TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE},
                                     {TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4}})
        TIFFSetField(tiff, static_cast<uint32_t>(tag), value);
    QByteArray blacks = invertedBytes(rows); // the coder takes 1 for black
    TIFFWriteEncodedStrip(tiff, 0, blacks.data(), blacks.size());
    TIFFClose(tiff);
    tiff = TIFFOpen(path.constData(), "r");
    QByteArray packed(static_cast<qsizetype>(TIFFRawStripSize(tiff, 0)), Qt::Uninitialized);
    TIFFReadRawStrip(tiff, 0, packed.data(), packed.size());
    TIFFClose(tiff);
    return packed;
}

QByteArray jpegBytes(const QByteArray& samples, QSize size, int channels, JpegStyle style)
{
    jpeg_compress_struct codec{};
    jpeg_error_mgr errors{};
    codec.err = jpeg_std_error(&errors);
    jpeg_create_compress(&codec);
    unsigned char* bytes = nullptr;
    unsigned long count = 0;
    jpeg_mem_dest(&codec, &bytes, &count);
    codec.image_width = static_cast<unsigned>(size.width());
    codec.image_height = static_cast<unsigned>(size.height());
    codec.input_components = channels;
    codec.in_color_space = channels == 1 ? JCS_GRAYSCALE : channels == 3 ? JCS_RGB : JCS_CMYK;
    jpeg_set_defaults(&codec);
    jpeg_set_quality(&codec, 95, TRUE);
    setStyle(codec, style);
    jpeg_start_compress(&codec, TRUE);
    QByteArray copy = samples;
    for (auto row = reinterpret_cast<JSAMPROW>(copy.data()); codec.next_scanline < codec.image_height;
         row += channels * size.width())
        jpeg_write_scanlines(&codec, &row, 1);
    jpeg_finish_compress(&codec);
    jpeg_destroy_compress(&codec);
    const std::unique_ptr<unsigned char, decltype(&std::free)> owner(bytes, &std::free);
    return QByteArray(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(count));
}

QByteArray invertedBytes(QByteArray bytes)
{
    for (char& byte : bytes)
        byte = static_cast<char>(~byte);
    return bytes;
}

} // namespace folvane::pdf
