#include "pictures/jpeg.h"

#include "pictures/ImageSamples.h"
#include "pictures/JpegReader.h"
#include "pictures/formats/pictureLimits.h"

namespace folvane {

namespace {

/// False: no JPEG that can be decoded, or not within what memory it may take.
bool isFeasible(JpegReader& reader, int eighths)
{
    if (eighths < 1 || eighths > 8 || !reader.hasHeader() || pixelCount(reader.size()) > maxImagePixels)
        return false;
    const qint64 samples = pixelCount(reader.size()) * reader.codec().num_components * eighths * eighths / 64;
    return reader.coefficientBytes() + samples <= maxDecodingBytes;
}

/// False when less than half of it is there.
bool readRows(JpegReader& reader, uchar* to, qsizetype stride)
{
    for (; !reader.isComplete(); to += stride)
        if (!reader.readRow(to))
            return false;
    return !reader.errors().endedTooEarly();
}

} // namespace

std::optional<QImage> decodeJpeg(const QByteArray& bytes, int scaleNumerator, const std::stop_token& stop)
{
    JpegReader reader(bytes);
    if (!isFeasible(reader, scaleNumerator))
        return std::nullopt;
    const int components = reader.codec().num_components;
    if (components != 1 && components != 3)
        return std::nullopt;
    if (!reader.start(scaleNumerator, components == 1 ? JCS_GRAYSCALE : JCS_RGB, stop))
        return std::nullopt;
    QImage image(reader.outputSize(), components == 1 ? QImage::Format_Grayscale8 : QImage::Format_RGB888);
    if (image.isNull() || !readRows(reader, image.bits(), image.bytesPerLine()))
        return std::nullopt;
    return image;
}

std::optional<InkSamples> decodeCmykJpeg(const QByteArray& bytes, int scaleNumerator,
                                         const std::stop_token& stop)
{
    JpegReader reader(bytes);
    if (!isFeasible(reader, scaleNumerator) || reader.codec().num_components != 4
        || !reader.start(scaleNumerator, JCS_CMYK, stop))
        return std::nullopt;
    const QSize size = reader.outputSize();
    const qsizetype stride = qsizetype(4) * size.width();
    InkSamples cmyk{size.width(), size.height(), reader.codec().saw_Adobe_marker != FALSE, {}};
    cmyk.samples.resize(stride * size.height());
    if (!readRows(reader, reinterpret_cast<uchar*>(cmyk.samples.data()), stride))
        return std::nullopt;
    return cmyk;
}

} // namespace folvane
