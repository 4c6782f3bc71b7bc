// libjpeg reports errors by a call that must not return; ours jumps back to the member function that is running.
// Between setjmp and the jump there are no destructors.

#include "pictures/jpegSamples.h"

#include "pictures/jpegCoefficients.h"
#include "pictures/jpegEncoding.h"

#include <csetjmp>
#include <cstdio>

#include <jerror.h>

namespace folvane {

namespace {

constexpr int maxScans = 200; // a small file can hold thousands of refining ones, each over the whole picture
constexpr unsigned rowsAtOnce = 64; // between two looks at the stop token

struct ErrorManager {
    jpeg_error_mgr base{};
    std::jmp_buf leave{};
    const std::stop_token* stop = nullptr;
    bool isDamaged = false;
};

ErrorManager& managerOf(j_common_ptr codec)
{
    return *reinterpret_cast<ErrorManager*>(codec->err); // base is its first member
}

[[noreturn]] void onError(j_common_ptr codec)
{
    std::longjmp(managerOf(codec).leave, 1);
}

bool meansDamage(int message)
{
    switch (message) {
    case JWRN_JPEG_EOF:
    case JWRN_HIT_MARKER:
    case JWRN_HUFF_BAD_CODE:
    case JWRN_MUST_RESYNC:
    case JWRN_BOGUS_PROGRESSION: return true;
    default: return false;
    }
}

void onMessage(j_common_ptr codec, int level)
{
    if (level < 0 && meansDamage(codec->err->msg_code))
        managerOf(codec).isDamaged = true;
}

void onOutput(j_common_ptr) {}

void onProgress(j_common_ptr codec)
{
    ErrorManager& manager = managerOf(codec);
    if (reinterpret_cast<j_decompress_ptr>(codec)->input_scan_number > maxScans)
        onError(codec);
    if (manager.stop && manager.stop->stop_requested())
        onError(codec);
}

jpeg_error_mgr* install(ErrorManager& manager)
{
    jpeg_std_error(&manager.base);
    manager.base.error_exit = onError;
    manager.base.emit_message = onMessage;
    manager.base.output_message = onOutput;
    return &manager.base;
}

bool isFeasible(const jpeg_decompress_struct& decoder)
{
    const qint64 pixels = qint64(decoder.image_width) * decoder.image_height;
    return pixels > 0 && pixels <= maxImagePixels;
}

/// The filter's parameter counts only where the file itself does not tell (ISO 32000-2, 7.4.8).
void chooseColourModel(jpeg_decompress_struct& decoder, std::optional<int> colourTransform)
{
    if (!colourTransform || decoder.saw_Adobe_marker)
        return;
    const bool transformed = *colourTransform != 0;
    if (decoder.num_components == 3)
        decoder.jpeg_color_space = transformed ? JCS_YCbCr : JCS_RGB;
    else if (decoder.num_components == 4)
        decoder.jpeg_color_space = transformed ? JCS_YCCK : JCS_CMYK;
}

J_COLOR_SPACE outputSpace(int components)
{
    return components == 1 ? JCS_GRAYSCALE : components == 3 ? JCS_RGB : JCS_CMYK;
}

unsigned eighthsFor(int side, int longest)
{
    for (const int eighths : {1, 2, 4}) {
        if ((qint64(side) * eighths + 7) / 8 >= longest)
            return static_cast<unsigned>(eighths);
    }
    return 8;
}

} // namespace

struct JpegStream::Decoder {
    Decoder(const QByteArray& data, std::optional<int> transform) : bytes(data), colourTransform(transform)
    {
        codec.err = install(errors);
    }
    ~Decoder() { jpeg_destroy_decompress(&codec); }
    Q_DISABLE_COPY_MOVE(Decoder)

    bool readHeader()
    {
        if (setjmp(errors.leave))
            return false;
        jpeg_create_decompress(&codec);
        progress.progress_monitor = onProgress;
        codec.progress = &progress;
        jpeg_mem_src(&codec, reinterpret_cast<const uchar*>(bytes.constData()),
                     static_cast<size_t>(bytes.size()));
        return jpeg_read_header(&codec, TRUE) == JPEG_HEADER_OK;
    }

    bool hasHeader()
    {
        if (!header)
            header = readHeader();
        return *header;
    }

    bool start(unsigned eighths)
    {
        if (setjmp(errors.leave))
            return false;
        chooseColourModel(codec, colourTransform);
        codec.out_color_space = outputSpace(codec.num_components);
        codec.scale_num = eighths;
        codec.scale_denom = 8;
        return jpeg_start_decompress(&codec);
    }

    bool readRow(uint8_t* row)
    {
        if (setjmp(errors.leave))
            return false;
        JSAMPROW to = row;
        return jpeg_read_scanlines(&codec, &to, 1) == 1;
    }

    const QByteArray& bytes;
    std::optional<int> colourTransform;
    ErrorManager errors;
    jpeg_progress_mgr progress{};
    jpeg_decompress_struct codec{};
    std::optional<bool> header; ///< whether it could be read, once that was tried
};

JpegStream::JpegStream(const QByteArray& bytes, std::optional<int> colourTransform)
    : m_decoder(std::make_unique<Decoder>(bytes, colourTransform))
{
}

JpegStream::~JpegStream() = default;

std::optional<JpegShape> JpegStream::shape()
{
    const jpeg_decompress_struct& codec = m_decoder->codec;
    if (!m_decoder->hasHeader() || !isFeasible(codec))
        return std::nullopt;
    const int channels = codec.num_components;
    if (channels != 1 && channels != 3 && channels != 4)
        return std::nullopt;
    return JpegShape{QSize(static_cast<int>(codec.image_width), static_cast<int>(codec.image_height)),
                     channels, channels == 4 && codec.saw_Adobe_marker};
}

std::optional<qint64> JpegStream::coefficientMemory()
{
    return m_decoder->hasHeader() ? std::optional(coefficientBytes(m_decoder->codec)) : std::nullopt;
}

bool JpegStream::decode(int longest, const std::stop_token& stop, const std::function<void(QSize)>& takeSize,
                        const RowTaker& takeRow)
{
    const std::optional<JpegShape> whole = shape();
    if (!whole)
        return false;
    m_decoder->errors.stop = &stop;
    if (!m_decoder->start(eighthsFor(std::max(whole->size.width(), whole->size.height()), longest)))
        return false;
    const jpeg_decompress_struct& codec = m_decoder->codec;
    takeSize(QSize(static_cast<int>(codec.output_width), static_cast<int>(codec.output_height)));
    std::vector<uint8_t> row(size_t(codec.output_width) * static_cast<size_t>(whole->channels));
    while (codec.output_scanline < codec.output_height) {
        if (codec.output_scanline % rowsAtOnce == 0 && stop.stop_requested())
            return false;
        if (!m_decoder->readRow(row.data()))
            return false;
        takeRow(row.data());
    }
    return !m_decoder->errors.isDamaged;
}

QByteArray encodedJpeg(const ImageSamples& samples, int quality, const std::stop_token& stop)
{
    return folvane::encodedJpeg({samples.bytes.data(), samples.stride(), samples.size, samples.channels},
                                quality, stop);
}

// Each block of 8 by 8 takes a bit for its mean and one for its end. Colour at half resolution adds half as many
// blocks, black as many again.
qint64 leastJpegBytes(QSize size, int channels)
{
    constexpr qint64 markers = 150;
    const qint64 blocks = qint64((size.width() + 7) / 8) * ((size.height() + 7) / 8);
    const qint64 halfBlocks = blocks * (channels == 1 ? 2 : channels == 3 ? 3 : 5);
    return markers + halfBlocks / 8;
}

} // namespace folvane
