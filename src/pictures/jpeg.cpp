// Pictures of files; samples inside PDFs have jpegSamples.cpp in src/pdf. libjpeg reports errors by a call that must not
// return; ours jumps back to the function of JpegReader that is running. Between setjmp and the jump there are no
// destructors.

#include "pictures/jpeg.h"

#include "pictures/jpegCoefficients.h"
#include "pictures/jpegEncoding.h"
#include "pictures/pictures.h"

#include <cstddef>
#include <cstdio>

#include <csetjmp>

#include <jerror.h>

#include <algorithm>
#include <memory>

namespace folvane {

namespace {

// Files of a few megabytes can hold thousands of refining scans, each of them over the whole picture.
constexpr int maxScans = 200;

struct ErrorManager {
    jpeg_error_mgr base{};
    std::jmp_buf leave{};
    const std::stop_token* stop = nullptr;
    bool endedTooEarly = false; ///< the data ended before half of the first scan was there
};

ErrorManager& managerOf(j_common_ptr codec)
{
    return *reinterpret_cast<ErrorManager*>(codec->err); // base is its first member
}

[[noreturn]] void onError(j_common_ptr codec)
{
    std::longjmp(managerOf(codec).leave, 1);
}

void onMessage(j_common_ptr codec, int level)
{
    if (level >= 0)
        return;
    ++codec->err->num_warnings;
    if (codec->err->msg_code != JWRN_JPEG_EOF)
        return;
    const auto decoder = reinterpret_cast<j_decompress_ptr>(codec);
    if (decoder->input_scan_number <= 1 && 2 * decoder->input_iMCU_row < decoder->total_iMCU_rows)
        managerOf(codec).endedTooEarly = true;
}

void onProgress(j_common_ptr codec)
{
    const bool hasTooMany = reinterpret_cast<j_decompress_ptr>(codec)->input_scan_number > maxScans;
    if (hasTooMany || managerOf(codec).stop->stop_requested())
        onError(codec);
}

void onOutput(j_common_ptr) {}

jpeg_error_mgr* install(ErrorManager& manager)
{
    jpeg_std_error(&manager.base);
    manager.base.error_exit = onError;
    manager.base.emit_message = onMessage;
    manager.base.output_message = onOutput;
    return &manager.base;
}

class JpegReader {
public:
    explicit JpegReader(const std::stop_token& stop)
    {
        m_decoder.err = install(m_errors);
        m_errors.stop = &stop;
    }
    ~JpegReader() { jpeg_destroy_decompress(&m_decoder); }
    Q_DISABLE_COPY_MOVE(JpegReader)

    /// False: no JPEG that can be decoded, or not within what memory it may take.
    bool readHeader(const QByteArray& bytes, int scaleNumerator)
    {
        if (!readMarkers(bytes) || pixels() > maxJpegPixels)
            return false;
        const qint64 samples = pixels() * m_decoder.num_components * scaleNumerator * scaleNumerator / 64;
        return coefficientBytes(m_decoder) + samples <= maxDecodingBytes;
    }

    bool start(int scaleNumerator, J_COLOR_SPACE space)
    {
        if (setjmp(m_errors.leave))
            return false;
        m_decoder.scale_num = uint(scaleNumerator);
        m_decoder.scale_denom = 8;
        m_decoder.out_color_space = space;
        return jpeg_start_decompress(&m_decoder);
    }

    /// Fills all rows. False when the data is damaged beyond use.
    bool readRows(uchar* to, size_t stride)
    {
        if (setjmp(m_errors.leave))
            return false;
        while (m_decoder.output_scanline < m_decoder.output_height) {
            JSAMPROW row = to + stride * m_decoder.output_scanline;
            jpeg_read_scanlines(&m_decoder, &row, 1);
        }
        return !m_errors.endedTooEarly;
    }

    const jpeg_decompress_struct& decoder() const { return m_decoder; }
    QSize outputSize() const { return QSize(int(m_decoder.output_width), int(m_decoder.output_height)); }
    qint64 pixels() const { return qint64(m_decoder.image_width) * m_decoder.image_height; }

private:
    bool readMarkers(const QByteArray& bytes)
    {
        if (setjmp(m_errors.leave))
            return false;
        jpeg_create_decompress(&m_decoder);
        m_progress.progress_monitor = onProgress;
        m_decoder.progress = &m_progress;
        jpeg_mem_src(&m_decoder, reinterpret_cast<const uchar*>(bytes.constData()), size_t(bytes.size()));
        return jpeg_read_header(&m_decoder, TRUE) == JPEG_HEADER_OK;
    }

    ErrorManager m_errors;
    jpeg_progress_mgr m_progress{};
    jpeg_decompress_struct m_decoder{};
};

bool isScale(int numerator)
{
    return numerator >= 1 && numerator <= 8;
}

} // namespace

QByteArray encodeJpeg(const QImage& image, int quality, const std::stop_token& stop)
{
    const bool grey = image.format() == QImage::Format_Grayscale8;
    const QImage plain = grey ? image : image.convertToFormat(QImage::Format_RGB888);
    return encodedJpeg(
        {plain.constBits(), static_cast<size_t>(plain.bytesPerLine()), plain.size(), grey ? 1 : 3}, quality,
        stop);
}

std::optional<QImage> decodeJpeg(const QByteArray& bytes, int scaleNumerator, const std::stop_token& stop)
{
    JpegReader reader(stop);
    if (!isScale(scaleNumerator) || !reader.readHeader(bytes, scaleNumerator))
        return std::nullopt;
    const int components = reader.decoder().num_components;
    if (components != 1 && components != 3)
        return std::nullopt;
    if (!reader.start(scaleNumerator, components == 1 ? JCS_GRAYSCALE : JCS_RGB))
        return std::nullopt;
    QImage image(reader.outputSize(), components == 1 ? QImage::Format_Grayscale8 : QImage::Format_RGB888);
    if (image.isNull() || !reader.readRows(image.bits(), size_t(image.bytesPerLine())))
        return std::nullopt;
    return image;
}

std::optional<InkSamples> decodeCmykJpeg(const QByteArray& bytes, int scaleNumerator,
                                         const std::stop_token& stop)
{
    JpegReader reader(stop);
    if (!isScale(scaleNumerator) || !reader.readHeader(bytes, scaleNumerator))
        return std::nullopt;
    if (reader.decoder().num_components != 4 || !reader.start(scaleNumerator, JCS_CMYK))
        return std::nullopt;
    const QSize size = reader.outputSize();
    InkSamples cmyk{size.width(), size.height(), reader.decoder().saw_Adobe_marker != FALSE, {}};
    cmyk.samples.resize(qsizetype(4) * size.width() * size.height());
    if (!reader.readRows(reinterpret_cast<uchar*>(cmyk.samples.data()), size_t(4) * size_t(size.width())))
        return std::nullopt;
    return cmyk;
}

} // namespace folvane
