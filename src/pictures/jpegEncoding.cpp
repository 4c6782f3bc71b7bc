#include "pictures/jpegEncoding.h"

#include "pictures/JpegErrors.h"
#include "pictures/samplesOf.h"

#include <algorithm>
#include <new>

#include <jerror.h>

namespace folvane {

namespace {

constexpr qsizetype leastRoom = 64 * 1024;
// Tables made for the picture save a tenth, but libjpeg keeps all of it in another form until they are known.
constexpr qint64 keptAtMost = qint64(160) << 20;

/// Where the file comes to lie: grown as it fills.
struct GrowingFile {
    jpeg_destination_mgr base{};
    QByteArray bytes;
};

GrowingFile& fileOf(j_compress_ptr codec)
{
    return *reinterpret_cast<GrowingFile*>(codec->dest); // base is its first member
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
    GrowingFile& file = fileOf(codec);
    const qsizetype used = file.bytes.size();
    if (!grow(file.bytes))
        ERREXIT1(codec, JERR_OUT_OF_MEMORY, 0);
    file.base.next_output_byte = reinterpret_cast<JOCTET*>(file.bytes.data()) + used;
    file.base.free_in_buffer = static_cast<size_t>(file.bytes.size() - used);
}

boolean onFull(j_compress_ptr codec)
{
    makeRoom(codec);
    return TRUE;
}

void onEnd(j_compress_ptr codec)
{
    GrowingFile& file = fileOf(codec);
    file.bytes.chop(static_cast<qsizetype>(file.base.free_in_buffer));
}

J_COLOR_SPACE colourSpace(int channels)
{
    return channels == 1 ? JCS_GRAYSCALE : channels == 3 ? JCS_RGB : JCS_CMYK;
}

/// What is coded, in halves of a plane: colour at half resolution adds half as much, black as much again.
int halfPlanes(int channels)
{
    return channels == 1 ? 2 : channels == 3 ? 3 : 5;
}

/// What libjpeg would keep for tables of the picture's own.
qint64 keptForTables(const SampleView& picture)
{
    return pixelCount(picture.size) * halfPlanes(picture.channels) * qint64(sizeof(JCOEF)) / 2;
}

class Encoder {
public:
    explicit Encoder(const std::stop_token& stop)
    {
        m_errors.stopBy(stop);
        m_file.base.init_destination = makeRoom;
        m_file.base.empty_output_buffer = onFull;
        m_file.base.term_destination = onEnd;
    }
    ~Encoder() { jpeg_destroy_compress(&m_codec); }
    Q_DISABLE_COPY_MOVE(Encoder)

    bool encode(const SampleView& picture, int quality, Chroma chroma)
    {
        return m_errors.guarded([&] {
            start(picture, quality, chroma);
            for (int y = 0; y < picture.size.height(); ++y) {
                auto row = const_cast<JSAMPROW>(picture.row(y)); // libjpeg only reads it
                jpeg_write_scanlines(&m_codec, &row, 1);
            }
            jpeg_finish_compress(&m_codec);
            return true;
        });
    }

    QByteArray takeBytes()
    {
        m_file.bytes.squeeze();
        return std::move(m_file.bytes);
    }

private:
    void start(const SampleView& picture, int quality, Chroma chroma)
    {
        m_errors.create(m_codec, [](jpeg_compress_struct& codec) { jpeg_create_compress(&codec); });
        m_codec.dest = &m_file.base;
        m_codec.image_width = static_cast<unsigned>(picture.size.width());
        m_codec.image_height = static_cast<unsigned>(picture.size.height());
        m_codec.input_components = picture.channels;
        m_codec.in_color_space = colourSpace(picture.channels);
        jpeg_set_defaults(&m_codec);
        if (picture.channels == 4)
            jpeg_set_colorspace(&m_codec, JCS_YCCK);
        if (chroma == Chroma::Full)
            m_codec.comp_info[0].h_samp_factor = m_codec.comp_info[0].v_samp_factor = 1;
        jpeg_set_quality(&m_codec, quality, TRUE);
        m_codec.optimize_coding = keptForTables(picture) <= keptAtMost;
        jpeg_start_compress(&m_codec, TRUE);
    }

    JpegErrors m_errors;
    GrowingFile m_file;
    jpeg_compress_struct m_codec{};
};

} // namespace

QByteArray encodeJpeg(const SampleView& picture, int quality, const std::stop_token& stop, Chroma chroma)
{
    const QSize size = picture.size;
    if (size.isEmpty() || size.width() > JPEG_MAX_DIMENSION || size.height() > JPEG_MAX_DIMENSION)
        return {};
    Encoder encoder(stop);
    return encoder.encode(picture, std::clamp(quality, 1, 100), chroma) ? encoder.takeBytes() : QByteArray();
}

QByteArray encodeJpeg(const QImage& image, int quality, const std::stop_token& stop)
{
    const bool isGrey = image.format() == QImage::Format_Grayscale8;
    const QImage plain = isGrey ? image : image.convertToFormat(QImage::Format_RGB888);
    return encodeJpeg(viewOf(plain), quality, stop);
}

// Each block of 8 by 8 takes a bit for its mean and one for its end.
qint64 leastJpegBytes(QSize size, int channels)
{
    constexpr qint64 markers = 150;
    const qint64 blocks = qint64((size.width() + 7) / 8) * ((size.height() + 7) / 8);
    return markers + blocks * halfPlanes(channels) / 8;
}

} // namespace folvane
