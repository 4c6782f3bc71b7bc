// libjpeg reports errors by a call that must not return; ours jumps back to encode(). Between setjmp and the jump there
// are no destructors, and what libjpeg calls throws nothing.

#include "pictures/jpegEncoding.h"

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <new>

#include <jerror.h>
#include <jpeglib.h>

namespace folvane {

namespace {

constexpr qsizetype leastRoom = 64 * 1024;
// Tables made for the picture save a tenth, but libjpeg keeps all of it in another form until they are known.
constexpr qint64 keptAtMost = qint64(160) << 20;

struct ErrorManager {
    jpeg_error_mgr base{};
    std::jmp_buf leave{};
    const std::stop_token* stop = nullptr;
};

/// Where the file comes to lie: grown as it fills.
struct Destination {
    jpeg_destination_mgr base{};
    QByteArray bytes;
};

[[noreturn]] void onError(j_common_ptr codec)
{
    std::longjmp(reinterpret_cast<ErrorManager*>(codec->err)->leave, 1); // base is its first member
}

void onOutput(j_common_ptr) {}

void onProgress(j_common_ptr codec)
{
    if (reinterpret_cast<ErrorManager*>(codec->err)->stop->stop_requested())
        onError(codec);
}

Destination& destinationOf(j_compress_ptr codec)
{
    return *reinterpret_cast<Destination*>(codec->dest); // base is its first member
}

bool grow(QByteArray& bytes)
{
    try {
        bytes.resize(std::max(leastRoom, bytes.size() + bytes.size() / 2));
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void makeRoom(j_compress_ptr codec)
{
    Destination& destination = destinationOf(codec);
    const qsizetype used = destination.bytes.size();
    if (!grow(destination.bytes))
        ERREXIT1(codec, JERR_OUT_OF_MEMORY, 0);
    destination.base.next_output_byte = reinterpret_cast<JOCTET*>(destination.bytes.data()) + used;
    destination.base.free_in_buffer = static_cast<size_t>(destination.bytes.size() - used);
}

boolean onFull(j_compress_ptr codec)
{
    makeRoom(codec);
    return TRUE;
}

void onEnd(j_compress_ptr codec)
{
    Destination& destination = destinationOf(codec);
    destination.bytes.chop(static_cast<qsizetype>(destination.base.free_in_buffer));
}

J_COLOR_SPACE colourSpace(int channels)
{
    return channels == 1 ? JCS_GRAYSCALE : channels == 3 ? JCS_RGB : JCS_CMYK;
}

/// What libjpeg would keep for tables of the picture's own: colour at half resolution takes half as much again.
qint64 keptForTables(const SampleView& picture)
{
    const qint64 pixels = qint64(picture.size.width()) * picture.size.height();
    const qint64 halfSamples = picture.channels == 1 ? 2 : picture.channels == 3 ? 3 : 5;
    return pixels * halfSamples * qint64(sizeof(JCOEF)) / 2;
}

class Encoder {
public:
    explicit Encoder(const std::stop_token& stop)
    {
        m_codec.err = jpeg_std_error(&m_errors.base);
        m_errors.base.error_exit = onError;
        m_errors.base.output_message = onOutput;
        m_errors.stop = &stop;
        m_progress.progress_monitor = onProgress;
        m_destination.base.init_destination = makeRoom;
        m_destination.base.empty_output_buffer = onFull;
        m_destination.base.term_destination = onEnd;
    }
    ~Encoder() { jpeg_destroy_compress(&m_codec); }
    Q_DISABLE_COPY_MOVE(Encoder)

    bool encode(const SampleView& picture, int quality)
    {
        if (setjmp(m_errors.leave))
            return false;
        start(picture, quality);
        while (m_codec.next_scanline < m_codec.image_height) {
            const uint8_t* samples = picture.samples + picture.stride * m_codec.next_scanline;
            auto row = const_cast<JSAMPROW>(samples); // libjpeg only reads it
            jpeg_write_scanlines(&m_codec, &row, 1);
        }
        jpeg_finish_compress(&m_codec);
        return true;
    }

    QByteArray takeBytes()
    {
        m_destination.bytes.squeeze();
        return std::move(m_destination.bytes);
    }

private:
    void start(const SampleView& picture, int quality)
    {
        jpeg_create_compress(&m_codec);
        m_codec.dest = &m_destination.base;
        m_codec.progress = &m_progress;
        m_codec.image_width = static_cast<unsigned>(picture.size.width());
        m_codec.image_height = static_cast<unsigned>(picture.size.height());
        m_codec.input_components = picture.channels;
        m_codec.in_color_space = colourSpace(picture.channels);
        jpeg_set_defaults(&m_codec);
        if (picture.channels == 4)
            jpeg_set_colorspace(&m_codec, JCS_YCCK);
        jpeg_set_quality(&m_codec, quality, TRUE);
        m_codec.optimize_coding = keptForTables(picture) <= keptAtMost;
        jpeg_start_compress(&m_codec, TRUE);
    }

    ErrorManager m_errors;
    jpeg_progress_mgr m_progress{};
    Destination m_destination;
    jpeg_compress_struct m_codec{};
};

} // namespace

QByteArray encodedJpeg(const SampleView& picture, int quality, const std::stop_token& stop)
{
    const QSize size = picture.size;
    if (size.isEmpty() || size.width() > JPEG_MAX_DIMENSION || size.height() > JPEG_MAX_DIMENSION)
        return {};
    Encoder encoder(stop);
    return encoder.encode(picture, std::clamp(quality, 1, 100)) ? encoder.takeBytes() : QByteArray();
}

} // namespace folvane
