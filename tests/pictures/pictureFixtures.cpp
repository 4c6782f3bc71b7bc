#include "pictures/pictureFixtures.h"

#include <QBuffer>
#include <QPainter>
#include <QTemporaryFile>
#include <QtEndian>

#include <lcms2.h>
#include <libheif/heif.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <jpeglib.h>
#include <tiffio.h>

/// The HEVC encoder, which only the fixtures use, loses some of its own memory.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libx265";
}

namespace folvane {

QImage fourFields(QImage::Format format, QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    const int w = size.width() / 2, h = size.height() / 2;
    painter.fillRect(0, 0, w, h, Qt::red);
    painter.fillRect(w, 0, w, h, Qt::green);
    painter.fillRect(0, h, w, h, Qt::blue);
    painter.fillRect(w, h, w, h, Qt::white);
    painter.end();
    return image.convertToFormat(format);
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

QByteArray gifFile(const QImage& image, int transparentIndex)
{
    constexpr char clear = char(0x80),
                   end = char(0x81); // codes of 8 bits, as long as the table is cleared in time
    const auto word = [](int value) { return QByteArray(1, char(value & 255)) + char(value >> 8); };
    QByteArray codes;
    for (int i = 0; i < image.width() * image.height(); ++i) {
        if (i % 100 == 0)
            codes += clear;
        codes += char(image.pixelIndex(i % image.width(), i / image.width()));
    }
    codes += end;
    QByteArray file = "GIF89a" + word(image.width()) + word(image.height()) + QByteArray("\xF6\0\0", 3);
    for (int i = 0; i < 128; ++i) {
        const QRgb colour = image.colorTable().value(i, qRgb(0, 0, 0));
        file += QByteArray(1, char(qRed(colour))) + char(qGreen(colour)) + char(qBlue(colour));
    }
    if (transparentIndex >= 0)
        file += QByteArray("\x21\xF9\4\1\0\0", 6) + char(transparentIndex) + '\0';
    file += ',' + QByteArray(4, '\0') + word(image.width()) + word(image.height()) + QByteArray("\0\7", 2);
    for (qsizetype at = 0; at < codes.size(); at += 255)
        file += char(std::min<qsizetype>(255, codes.size() - at)) + codes.mid(at, 255);
    return file + QByteArray("\0;", 2);
}

QByteArray exifBlock(int orientation, bool bigEndian)
{
    QByteArray block(bigEndian ? "MM" : "II");
    const auto put = [&](auto number) {
        const auto ordered = bigEndian ? qToBigEndian(number) : qToLittleEndian(number);
        block.append(reinterpret_cast<const char*>(&ordered), sizeof ordered);
    };
    put(quint16(42)), put(quint32(8)), put(quint16(1));
    put(quint16(0x0112)), put(quint16(3)), put(quint32(1)), put(quint16(orientation)), put(quint16(0));
    put(quint32(0));
    return block;
}

QByteArray withJpegSegment(const QByteArray& jpeg, uchar marker, const QByteArray& content)
{
    QByteArray segment("\xFF");
    segment.append(char(marker));
    const quint16 length = qToBigEndian(quint16(content.size() + 2));
    segment.append(reinterpret_cast<const char*>(&length), 2);
    return jpeg.first(2) + segment + content + jpeg.sliced(2);
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

namespace {

QByteArray bigEndian(quint32 value)
{
    const quint32 ordered = qToBigEndian(value);
    return QByteArray(reinterpret_cast<const char*>(&ordered), 4);
}

QByteArray pngChunk(const QByteArray& name, const QByteArray& content)
{
    const QByteArray body = name + content;
    const auto sum = crc32(0, reinterpret_cast<const Bytef*>(body.constData()), uInt(body.size()));
    return bigEndian(quint32(content.size())) + body + bigEndian(quint32(sum));
}

constexpr qsizetype pngHeaderAt = 8, pngHeaderSize = 25;

} // namespace

QByteArray withPngChunk(const QByteArray& png, const QByteArray& name, const QByteArray& content)
{
    constexpr qsizetype at = pngHeaderAt + pngHeaderSize;
    return png.first(at) + pngChunk(name, content) + png.sliced(at);
}

QByteArray withPngSize(QByteArray png, QSize size)
{
    const QByteArray rest = png.mid(pngHeaderAt + 16, 5);
    const QByteArray header = bigEndian(quint32(size.width())) + bigEndian(quint32(size.height())) + rest;
    return png.replace(pngHeaderAt, pngHeaderSize, pngChunk("IHDR", header));
}

QByteArray withPngProfile(const QByteArray& png, const QByteArray& profile)
{
    return withPngChunk(png, "iCCP", QByteArray("p\0\0", 3) + qCompress(profile).sliced(4));
}

QByteArray plainJpeg(const QByteArray& sample, const JpegOptions& options, QSize size)
{
    jpeg_error_mgr errors;
    jpeg_compress_struct encoder;
    encoder.err = jpeg_std_error(&errors);
    jpeg_create_compress(&encoder);
    uchar* bytes = nullptr;
    unsigned long length = 0;
    jpeg_mem_dest(&encoder, &bytes, &length);
    encoder.image_width = uint(size.width());
    encoder.image_height = uint(size.height());
    const bool rgb = options.model == JpegModel::Rgb || options.model == JpegModel::RgbWithoutMarker;
    encoder.input_components = rgb ? 3 : 4;
    encoder.in_color_space = rgb ? JCS_RGB : JCS_CMYK;
    jpeg_set_defaults(&encoder);
    jpeg_set_colorspace(&encoder, options.model == JpegModel::YcckAdobe ? JCS_YCCK : encoder.in_color_space);
    if (options.model == JpegModel::Cmyk || options.model == JpegModel::RgbWithoutMarker)
        encoder.write_Adobe_marker = FALSE;
    jpeg_set_quality(&encoder, 100, TRUE);
    encoder.arith_code = options.arithmetic;
    if (options.progressive)
        jpeg_simple_progression(&encoder);
    jpeg_start_compress(&encoder, TRUE);
    QByteArray row = sample.repeated(size.width());
    auto rows = reinterpret_cast<JSAMPROW>(row.data());
    for (int y = 0; y < size.height(); ++y)
        jpeg_write_scanlines(&encoder, &rows, 1);
    jpeg_finish_compress(&encoder);
    jpeg_destroy_compress(&encoder);
    const QByteArray file(reinterpret_cast<char*>(bytes), qsizetype(length));
    std::free(bytes);
    return file;
}

namespace {

QByteArray saved(cmsHPROFILE profile)
{
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile, nullptr, &size);
    QByteArray bytes(qsizetype(size), Qt::Uninitialized);
    cmsSaveProfileToMem(profile, bytes.data(), &size);
    cmsCloseProfile(profile);
    return bytes;
}

QByteArray rgbProfile(const cmsCIExyYTRIPLE& primaries)
{
    const cmsCIExyY white{0.3127, 0.3290, 1};
    const std::array<cmsFloat64Number, 5> srgb{2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045};
    cmsToneCurve* curve = cmsBuildParametricToneCurve(nullptr, 4, srgb.data());
    cmsToneCurve* curves[] = {curve, curve, curve};
    const QByteArray bytes = saved(cmsCreateRGBProfile(&white, &primaries, curves));
    cmsFreeToneCurve(curve);
    return bytes;
}

using Sampler = cmsInt32Number (*)(const cmsUInt16Number[], cmsUInt16Number[], void*);

/// A profile of nothing but a lookup table to Lab.
QByteArray tableProfile(cmsColorSpaceSignature model, cmsUInt32Number channels, Sampler sampler, void* cargo)
{
    cmsHPROFILE profile = cmsCreateProfilePlaceholder(nullptr);
    cmsSetProfileVersion(profile, 4.3);
    cmsSetDeviceClass(profile, cmsSigOutputClass);
    cmsSetColorSpace(profile, model);
    cmsSetPCS(profile, cmsSigLabData);
    cmsPipeline* pipeline = cmsPipelineAlloc(nullptr, channels, 3);
    cmsStage* table = cmsStageAllocCLut16bit(nullptr, channels == 3 ? 17 : 5, channels, 3, nullptr);
    cmsStageSampleCLut16bit(table, sampler, cargo, 0);
    cmsPipelineInsertStage(pipeline, cmsAT_END, cmsStageAllocToneCurves(nullptr, channels, nullptr));
    cmsPipelineInsertStage(pipeline, cmsAT_END, table);
    cmsPipelineInsertStage(pipeline, cmsAT_END, cmsStageAllocToneCurves(nullptr, 3, nullptr));
    if (!cmsWriteTag(profile, cmsSigAToB0Tag, pipeline))
        qFatal("The table profile cannot be made.");
    cmsPipelineFree(pipeline);
    return saved(profile);
}

cmsInt32Number swappedToLab(const cmsUInt16Number in[], cmsUInt16Number out[], void* toLab)
{
    const cmsUInt16Number rgb[] = {in[1], in[0], in[2]};
    cmsDoTransform(toLab, rgb, out, 1);
    return 1;
}

cmsInt32Number inkToGreen(const cmsUInt16Number in[], cmsUInt16Number out[], void*)
{
    const int ink = std::max({in[0], in[1], in[2], in[3]});
    const cmsCIELab lab{100 - ink / 65535.0 * 50, -60 * (ink / 65535.0), 50 * (ink / 65535.0)};
    cmsFloat2LabEncoded(out, &lab);
    return 1;
}

} // namespace

QByteArray swappedProfile()
{
    return rgbProfile({{0.30, 0.60, 1}, {0.64, 0.33, 1}, {0.15, 0.06, 1}});
}

QByteArray swappedTableProfile()
{
    cmsHPROFILE srgb = cmsCreate_sRGBProfile(), lab = cmsCreateLab4Profile(nullptr);
    cmsHTRANSFORM toLab = cmsCreateTransform(srgb, TYPE_RGB_16, lab, TYPE_Lab_16, INTENT_PERCEPTUAL, 0);
    const QByteArray bytes = tableProfile(cmsSigRgbData, 3, swappedToLab, toLab);
    cmsDeleteTransform(toLab);
    cmsCloseProfile(srgb);
    cmsCloseProfile(lab);
    return bytes;
}

QByteArray linearGreyProfile()
{
    cmsToneCurve* curve = cmsBuildGamma(nullptr, 1.0);
    const QByteArray bytes = saved(cmsCreateGrayProfile(cmsD50_xyY(), curve));
    cmsFreeToneCurve(curve);
    return bytes;
}

QByteArray greenInksProfile()
{
    return tableProfile(cmsSigCmykData, 4, inkToGreen, nullptr);
}

QByteArray displayP3Profile()
{
    return rgbProfile({{0.680, 0.320, 1}, {0.265, 0.690, 1}, {0.150, 0.060, 1}});
}

namespace {

/// A block of samples, all inks or one of them, as the file holds it.
QByteArray inkBlock(QRect area, const TiffOptions& options, int onlyInk)
{
    QByteArray block;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            for (int ink = 0; ink < 4; ++ink)
                if (onlyInk < 0 || ink == onlyInk)
                    block.append(options.bits / 8,
                                 ink == (x >= 32) + 2 * (y >= 16) && ink < 3 ? '\xFF' : '\0');
    return block;
}

} // namespace

QByteArray inkTiff(const TiffOptions& options)
{
    constexpr int width = 64, height = 32, rows = 16;
    QTemporaryFile file;
    file.open();
    TIFF* tiff = TIFFOpen(qPrintable(file.fileName()), "w");
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, height);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 4);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, options.bits);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_SEPARATED);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, options.separate ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
    if (!options.iccProfile.isEmpty())
        TIFFSetField(tiff, TIFFTAG_ICCPROFILE, quint32(options.iccProfile.size()),
                     options.iccProfile.constData());
    if (options.tile > 0) {
        TIFFSetField(tiff, TIFFTAG_TILEWIDTH, options.tile);
        TIFFSetField(tiff, TIFFTAG_TILELENGTH, options.tile);
    } else {
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, rows);
    }
    const QSize step = options.tile > 0 ? QSize(options.tile, options.tile) : QSize(width, rows);
    quint32 block = 0;
    for (int ink = options.separate ? 0 : -1; ink < (options.separate ? 4 : 0); ++ink)
        for (int y = 0; y < height; y += step.height())
            for (int x = 0; x < width; x += step.width()) {
                QByteArray bytes = inkBlock(QRect(QPoint(x, y), step), options, ink);
                if (options.tile > 0)
                    TIFFWriteEncodedTile(tiff, block++, bytes.data(), bytes.size());
                else
                    TIFFWriteEncodedStrip(tiff, block++, bytes.data(), bytes.size());
            }
    TIFFClose(tiff);
    return file.readAll();
}

QByteArray tiffFile(const QList<TiffPicture>& pictures)
{
    QTemporaryFile file;
    file.open();
    TIFF* tiff = TIFFOpen(qPrintable(file.fileName()), "w");
    for (const TiffPicture& picture : pictures) {
        QImage image = plain(picture.colour, QImage::Format_RGB888, picture.size);
        TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, image.width());
        TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, image.height());
        TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 3);
        TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
        TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
        TIFFSetField(tiff, TIFFTAG_ORIENTATION, picture.orientation);
        for (int y = 0; y < image.height(); ++y)
            TIFFWriteScanline(tiff, image.scanLine(y), quint32(y), 0);
        TIFFWriteDirectory(tiff);
    }
    TIFFClose(tiff);
    return file.readAll();
}

namespace {

heif_error appendTo(heif_context*, const void* data, size_t size, void* bytes)
{
    static_cast<QByteArray*>(bytes)->append(static_cast<const char*>(data), qsizetype(size));
    return {heif_error_Ok, heif_suberror_Unspecified, ""};
}

void copyPixels(const QImage& from, heif_image* to, heif_channel channel, qsizetype bytesPerPixel)
{
    int stride = 0;
    uint8_t* plane = heif_image_get_plane(to, channel, &stride);
    for (int y = 0; y < from.height(); ++y)
        std::memcpy(plane + qsizetype(stride) * y, from.constScanLine(y),
                    size_t(bytesPerPixel * from.width()));
}

heif_image* heifImage(const QImage& image)
{
    const bool alpha = image.hasAlphaChannel();
    const QImage pixels = image.convertToFormat(alpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
    heif_image* result = nullptr;
    heif_image_create(image.width(), image.height(), heif_colorspace_RGB,
                      alpha ? heif_chroma_interleaved_RGBA : heif_chroma_interleaved_RGB, &result);
    heif_image_add_plane(result, heif_channel_interleaved, image.width(), image.height(), 8);
    copyPixels(pixels, result, heif_channel_interleaved, alpha ? 4 : 3);
    return result;
}

void tag(heif_image* image, const HeifOptions& options)
{
    if (!options.iccProfile.isEmpty())
        heif_image_set_raw_color_profile(image, "prof", options.iccProfile.constData(),
                                         size_t(options.iccProfile.size()));
    if (options.primaries == 0)
        return;
    heif_color_profile_nclx* nclx = heif_nclx_color_profile_alloc();
    heif_nclx_color_profile_set_color_primaries(nclx, uint16_t(options.primaries));
    heif_nclx_color_profile_set_transfer_characteristics(nclx, uint16_t(options.transfer));
    heif_nclx_color_profile_set_matrix_coefficients(nclx, 6);
    nclx->full_range_flag = 1;
    heif_image_set_nclx_color_profile(image, nclx);
    heif_nclx_color_profile_free(nclx);
}

} // namespace

QByteArray heifFile(const QImage& image, const HeifOptions& options)
{
    heif_context* context = heif_context_alloc();
    heif_encoder* encoder = nullptr;
    heif_context_get_encoder_for_format(
        context, options.codec == HeifCodec::Hevc ? heif_compression_HEVC : heif_compression_AV1, &encoder);
    heif_encoder_set_lossy_quality(encoder, 100);
    heif_image* pixels = heifImage(image);
    tag(pixels, options);
    heif_encoding_options* encoding = heif_encoding_options_alloc();
    encoding->image_orientation = heif_orientation(options.orientation);
    encoding->macOS_compatibility_workaround_no_nclx_profile = 0;
    heif_context_encode_image(context, pixels, encoder, encoding, nullptr);
    QByteArray bytes;
    heif_writer writer{1, appendTo};
    heif_context_write(context, &writer, &bytes);
    heif_encoding_options_free(encoding);
    heif_image_release(pixels);
    heif_encoder_release(encoder);
    heif_context_free(context);
    return bytes;
}

} // namespace folvane
