#pragma once

#include "pictures/ImageSamples.h"

#include <QByteArray>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace folvane {

class JpegReader;

/// Takes one row of samples; called once for each row, from the top.
using RowTaker = std::function<void(const uint8_t* row)>;

/// What a JPEG gives when it is decoded.
struct JpegShape {
    QSize size;
    int channels = 0; ///< 1, 3 (RGB) or 4 (inks, as they stand in the file: nothing is inverted)
};

/// JPEG as it stands in a PDF: samples without any judgement of what their colours mean.
class JpegStream {
public:
    /// The bytes must outlive it. `colourTransform` is the entry of that name of the filter's parameters.
    JpegStream(const QByteArray& bytes, std::optional<int> colourTransform);
    ~JpegStream();
    Q_DISABLE_COPY_MOVE(JpegStream)

    /// Nothing when it is no JPEG of 8 bits and 1, 3 or 4 components, or is too large.
    std::optional<JpegShape> shape();

    /// What a JPEG in several scans takes until its last one is there, in bytes; 0 for others, nothing where the bytes
    /// have no whole header.
    std::optional<qint64> coefficientMemory();

    /// Decodes at the smallest of the sizes 1/8, 1/4, 1/2 and 1 (those quick in the transform domain) whose long side is
    /// at least `longest`; at full size when there is none. Tells the size before the first row is made.
    /// False when it is damaged, or stopped.
    bool decode(int longest, const std::stop_token& stop, const std::function<void(QSize)>& takeSize,
                const RowTaker& takeRow);

private:
    std::unique_ptr<JpegReader> m_reader;
    std::optional<int> m_colourTransform;
};

/// No JPEG that is packed into so many bytes is taken to be larger than this.
constexpr qint64 unpackedJpegLimit(qint64 packed)
{
    return 4 * packed + 64 * 1024;
}

} // namespace folvane
