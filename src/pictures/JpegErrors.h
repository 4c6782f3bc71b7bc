#pragma once

#include <QtGlobal>

#include <csetjmp>
#include <cstdio>
#include <stop_token>

#include <jpeglib.h>

namespace folvane {

/// What libjpeg calls when something is wrong, and between rows. A call that reports an error must not return: ours jumps
/// back into guarded(), where nothing with a destructor may stand, and nothing may throw.
class JpegErrors {
public:
    /// Of the segments that hold an orientation, and parts of a profile.
    static constexpr int exifMarker = JPEG_APP0 + 1, profileMarker = JPEG_APP0 + 2;

    JpegErrors();
    Q_DISABLE_COPY_MOVE(JpegErrors)

    /// Creates the codec, by jpeg_create_compress or jpeg_create_decompress. What it is told to stop by ends its work soon.
    template <typename Codec, typename Make> void create(Codec& codec, Make make)
    {
        codec.err = &m_manager;
        codec.client_data = this;
        make(codec);
        codec.progress = &m_progress;
    }

    /// What the step says; false when libjpeg has left it.
    template <typename Step> bool guarded(Step step)
    {
        if (setjmp(m_leave))
            return false;
        return step();
    }

    void stopBy(const std::stop_token& stop) { m_stop = stop; }
    /// Data is missing or cannot be what was written.
    bool isDamaged() const { return m_isDamaged; }
    /// The data ended before half of the first scan was there.
    bool endedTooEarly() const { return m_endedTooEarly; }

private:
    static JpegErrors& of(j_common_ptr codec) { return *static_cast<JpegErrors*>(codec->client_data); }
    [[noreturn]] static void onError(j_common_ptr codec);
    static void onMessage(j_common_ptr codec, int level);
    static void onOutput(j_common_ptr) {}
    static void onProgress(j_common_ptr codec);

    void takeWarning(jpeg_decompress_struct& decoder);
    void countSegment(jpeg_decompress_struct& decoder);

    jpeg_error_mgr m_manager{};
    jpeg_progress_mgr m_progress{};
    std::jmp_buf m_leave{};
    std::stop_token m_stop;
    int m_segments = 0;
    bool m_isDamaged = false;
    bool m_endedTooEarly = false;
};

} // namespace folvane
