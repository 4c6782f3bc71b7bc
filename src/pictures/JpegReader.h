#pragma once

#include "pictures/JpegErrors.h"

#include <QByteArray>
#include <QSize>

#include <optional>

namespace folvane {

/// A JPEG on its way through libjpeg: its header, then the start, then row after row.
class JpegReader {
public:
    /// Whether the segments that hold orientation and profile stay with the header.
    enum class Tags { Dropped, Kept };

    /// The bytes must outlive it.
    explicit JpegReader(const QByteArray& bytes, Tags tags = Tags::Dropped) : m_bytes(bytes), m_tags(tags) {}
    ~JpegReader() { jpeg_destroy_decompress(&m_codec); }
    Q_DISABLE_COPY_MOVE(JpegReader)

    /// False: no JPEG, or none that can be decoded. All that follows is for those that have one.
    bool hasHeader();
    /// What libjpeg knows of it; its fields may be set before the start.
    jpeg_decompress_struct& codec() { return m_codec; }
    QSize size() const
    {
        return {static_cast<int>(m_codec.image_width), static_cast<int>(m_codec.image_height)};
    }
    /// What is kept of a JPEG in several scans until the last one, in bytes; 0 for others.
    qint64 coefficientBytes();
    /// Empty when there is none, or parts of it are missing.
    QByteArray iccProfile();

    /// Decodes at so many eighths of the size, rounded up. False when it is damaged beyond use, and after a stop.
    bool start(int eighths, J_COLOR_SPACE space, const std::stop_token& stop);
    QSize outputSize() const
    {
        return {static_cast<int>(m_codec.output_width), static_cast<int>(m_codec.output_height)};
    }
    bool isComplete() const { return m_codec.output_scanline == m_codec.output_height; }
    /// False as with start(). What is missing of cut data is grey.
    bool readRow(uint8_t* to);

    const JpegErrors& errors() const { return m_errors; }

private:
    bool readHeader();

    const QByteArray& m_bytes;
    Tags m_tags;
    JpegErrors m_errors;
    jpeg_decompress_struct m_codec{};
    std::optional<bool> m_hasHeader; // once it was tried
};

} // namespace folvane
