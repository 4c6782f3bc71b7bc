#include "pictures/JpegErrors.h"

#include <jerror.h>

namespace folvane {

namespace {

constexpr int maxScans = 200; // a small file can hold thousands of refining ones, each over the whole picture
constexpr int mostSegments = 1024; // of a header that are kept: a profile has 255 at most

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

} // namespace

JpegErrors::JpegErrors()
{
    jpeg_std_error(&m_manager);
    m_manager.error_exit = onError;
    m_manager.emit_message = onMessage;
    m_manager.output_message = onOutput;
    m_progress.progress_monitor = onProgress;
}

void JpegErrors::onError(j_common_ptr codec)
{
    std::longjmp(of(codec).m_leave, 1);
}

void JpegErrors::onMessage(j_common_ptr codec, int level)
{
    if (!codec->is_decompressor)
        return;
    auto& decoder = *reinterpret_cast<j_decompress_ptr>(codec);
    if (level < 0)
        of(codec).takeWarning(decoder);
    else if (codec->err->msg_code == JTRC_MISC_MARKER)
        of(codec).countSegment(decoder);
}

void JpegErrors::takeWarning(jpeg_decompress_struct& decoder)
{
    const int message = decoder.err->msg_code;
    m_isDamaged = m_isDamaged || meansDamage(message);
    if (message == JWRN_JPEG_EOF && decoder.input_scan_number <= 1
        && 2 * decoder.input_iMCU_row < decoder.total_iMCU_rows)
        m_endedTooEarly = true;
}

// A header can hold millions of empty segments, and the library looks through all that it has kept for each new one.
void JpegErrors::countSegment(jpeg_decompress_struct& decoder)
{
    if (++m_segments == mostSegments)
        for (const int marker : {exifMarker, profileMarker})
            jpeg_save_markers(&decoder, marker, 0);
}

void JpegErrors::onProgress(j_common_ptr codec)
{
    const bool hasTooManyScans =
        codec->is_decompressor && reinterpret_cast<j_decompress_ptr>(codec)->input_scan_number > maxScans;
    if (hasTooManyScans || of(codec).m_stop.stop_requested())
        onError(codec);
}

} // namespace folvane
