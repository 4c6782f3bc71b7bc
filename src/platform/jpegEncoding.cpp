// libjpeg reports errors by a call that must not return; ours jumps back to encode(). Between setjmp and the jump there
// are no destructors.

#include "platform/jpegEncoding.h"

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>

#include <jpeglib.h>

namespace folvane {

namespace {

constexpr unsigned rowsAtOnce = 64; // between two looks at the stop token

struct ErrorManager {
    jpeg_error_mgr base{};
    std::jmp_buf leave{};
};

[[noreturn]] void onError(j_common_ptr codec)
{
    std::longjmp(reinterpret_cast<ErrorManager*>(codec->err)->leave, 1); // base is its first member
}

void onOutput(j_common_ptr) {}

J_COLOR_SPACE colourSpace(int channels)
{
    return channels == 1 ? JCS_GRAYSCALE : channels == 3 ? JCS_RGB : JCS_CMYK;
}

class Encoder {
public:
    Encoder()
    {
        m_codec.err = jpeg_std_error(&m_errors.base);
        m_errors.base.error_exit = onError;
        m_errors.base.output_message = onOutput;
    }
    ~Encoder()
    {
        jpeg_destroy_compress(&m_codec);
        std::free(m_bytes);
    }
    Q_DISABLE_COPY_MOVE(Encoder)

    bool encode(const SampleView& picture, int quality, const std::stop_token& stop)
    {
        if (setjmp(m_errors.leave)) {
            m_bytes = nullptr; // libjpeg may have moved it untold; only a lack of memory leads here
            return false;
        }
        start(picture, quality);
        while (m_codec.next_scanline < m_codec.image_height) {
            if (m_codec.next_scanline % rowsAtOnce == 0 && stop.stop_requested())
                return false; // m_bytes still holds: with optimised tables nothing is written before the end
            const uint8_t* samples = picture.samples + picture.stride * m_codec.next_scanline;
            auto row = const_cast<JSAMPROW>(samples); // libjpeg only reads it
            jpeg_write_scanlines(&m_codec, &row, 1);
        }
        jpeg_finish_compress(&m_codec);
        return true;
    }

    QByteArray bytes() const { return QByteArray(reinterpret_cast<const char*>(m_bytes), qsizetype(m_size)); }

private:
    void start(const SampleView& picture, int quality)
    {
        jpeg_create_compress(&m_codec);
        jpeg_mem_dest(&m_codec, &m_bytes, &m_size);
        m_codec.image_width = static_cast<unsigned>(picture.size.width());
        m_codec.image_height = static_cast<unsigned>(picture.size.height());
        m_codec.input_components = picture.channels;
        m_codec.in_color_space = colourSpace(picture.channels);
        jpeg_set_defaults(&m_codec);
        if (picture.channels == 4)
            jpeg_set_colorspace(&m_codec, JCS_YCCK);
        jpeg_set_quality(&m_codec, quality, TRUE);
        m_codec.optimize_coding = TRUE;
        jpeg_start_compress(&m_codec, TRUE);
    }

    ErrorManager m_errors;
    jpeg_compress_struct m_codec{};
    uchar* m_bytes = nullptr;
    unsigned long m_size = 0;
};

} // namespace

QByteArray encodedJpeg(const SampleView& picture, int quality, const std::stop_token& stop)
{
    const QSize size = picture.size;
    if (size.isEmpty() || size.width() > JPEG_MAX_DIMENSION || size.height() > JPEG_MAX_DIMENSION)
        return {};
    Encoder encoder;
    return encoder.encode(picture, std::clamp(quality, 1, 100), stop) ? encoder.bytes() : QByteArray();
}

} // namespace folvane
