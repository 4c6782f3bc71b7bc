#pragma once

#include "pdf/structure/qpdfInclude.h"
#include "pictures/jpegSamples.h"

namespace folvane::pdf {

/// How samples lie in the rows of an uncompressed image.
struct SampleLayout {
    QSize size;
    int channels = 1;
    int bits = 8;
    QByteArray
        palette; ///< the colour of each possible sample, paletteChannels bytes each; empty when samples are colours
    int paletteChannels = 0;

    /// Bytes of one row as it is stored.
    qint64 rowBytes() const { return (qint64(size.width()) * channels * bits + 7) / 8; }
    int outputChannels() const { return palette.isEmpty() ? channels : paletteChannels; }
};

/// Takes the bytes of an uncompressed image as they come and hands on its rows, eight bits a sample. Once it has all rows,
/// or is stopped, it ends the decoding before it by throwing.
class SampleRows : public Pipeline {
public:
    SampleRows(SampleLayout layout, RowTaker taker, std::stop_token stop);

    void write(const unsigned char* data, size_t length) override;
    void finish() override {}

    bool isComplete() const { return m_rows == m_layout.size.height(); }

private:
    void handOn(const uint8_t* packed);
    void resolvePalette();

    SampleLayout m_layout;
    RowTaker m_taker;
    std::stop_token m_stop;
    size_t m_rowBytes;
    std::vector<uint8_t> m_packed; // the beginning of a row that is still incomplete
    std::vector<uint8_t> m_samples;
    std::vector<uint8_t> m_colours;
    int m_rows = 0;
};

} // namespace folvane::pdf
