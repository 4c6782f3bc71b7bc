#include "pictures/JpegReader.h"

#include <cstdlib>
#include <memory>

namespace folvane {

bool JpegReader::hasHeader()
{
    if (!m_hasHeader)
        m_hasHeader = readHeader();
    return *m_hasHeader;
}

bool JpegReader::readHeader()
{
    return m_errors.guarded([this] {
        m_errors.create(m_codec, [](jpeg_decompress_struct& codec) { jpeg_create_decompress(&codec); });
        jpeg_mem_src(&m_codec, reinterpret_cast<const uchar*>(m_bytes.constData()),
                     static_cast<size_t>(m_bytes.size()));
        constexpr unsigned whole = 0xFFFF;
        for (const int marker : {JpegErrors::exifMarker, JpegErrors::profileMarker})
            jpeg_save_markers(&m_codec, marker, m_tags == Tags::Kept ? whole : 0);
        return jpeg_read_header(&m_codec, TRUE) == JPEG_HEADER_OK;
    });
}

qint64 JpegReader::coefficientBytes()
{
    if (!jpeg_has_multiple_scans(&m_codec))
        return 0;
    qint64 blocks = 0;
    for (int i = 0; i < m_codec.num_components; ++i)
        blocks += qint64(m_codec.comp_info[i].width_in_blocks) * m_codec.comp_info[i].height_in_blocks;
    return blocks * qint64(sizeof(JBLOCK));
}

QByteArray JpegReader::iccProfile()
{
    JOCTET* bytes = nullptr;
    unsigned length = 0;
    if (!m_errors.guarded([&] { return jpeg_read_icc_profile(&m_codec, &bytes, &length) == TRUE; }))
        return {};
    const std::unique_ptr<JOCTET, decltype(&std::free)> owner(bytes, &std::free);
    return QByteArray(reinterpret_cast<const char*>(bytes), qsizetype(length));
}

bool JpegReader::start(int eighths, J_COLOR_SPACE space, const std::stop_token& stop)
{
    m_errors.stopBy(stop);
    m_codec.out_color_space = space;
    m_codec.scale_num = static_cast<unsigned>(eighths);
    m_codec.scale_denom = 8;
    return m_errors.guarded([this] { return jpeg_start_decompress(&m_codec) == TRUE; });
}

bool JpegReader::readRow(uint8_t* to)
{
    return m_errors.guarded([this, to] {
        JSAMPROW row = to;
        return jpeg_read_scanlines(&m_codec, &row, 1) == 1;
    });
}

} // namespace folvane
