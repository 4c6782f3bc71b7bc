#include "pictures/jpegSamples.h"

#include "pictures/JpegReader.h"

namespace folvane {

namespace {

/// The filter's parameter counts only where the file itself does not tell (ISO 32000-2, 7.4.8).
void chooseColourModel(jpeg_decompress_struct& codec, std::optional<int> colourTransform)
{
    if (!colourTransform || codec.saw_Adobe_marker)
        return;
    const bool transformed = *colourTransform != 0;
    if (codec.num_components == 3)
        codec.jpeg_color_space = transformed ? JCS_YCbCr : JCS_RGB;
    else if (codec.num_components == 4)
        codec.jpeg_color_space = transformed ? JCS_YCCK : JCS_CMYK;
}

J_COLOR_SPACE outputSpace(int components)
{
    return components == 1 ? JCS_GRAYSCALE : components == 3 ? JCS_RGB : JCS_CMYK;
}

int eighthsFor(QSize size, int longest)
{
    for (const int eighths : {1, 2, 4}) {
        if ((qint64(std::max(size.width(), size.height())) * eighths + 7) / 8 >= longest)
            return eighths;
    }
    return 8;
}

} // namespace

JpegStream::JpegStream(const QByteArray& bytes, std::optional<int> colourTransform)
    : m_reader(std::make_unique<JpegReader>(bytes)), m_colourTransform(colourTransform)
{
}

JpegStream::~JpegStream() = default;

std::optional<JpegShape> JpegStream::shape()
{
    if (!m_reader->hasHeader() || pixelCount(m_reader->size()) > maxImagePixels)
        return std::nullopt;
    const int channels = m_reader->codec().num_components;
    if (channels != 1 && channels != 3 && channels != 4)
        return std::nullopt;
    return JpegShape{m_reader->size(), channels};
}

std::optional<qint64> JpegStream::coefficientMemory()
{
    return m_reader->hasHeader() ? std::optional(m_reader->coefficientBytes()) : std::nullopt;
}

bool JpegStream::decode(int longest, const std::stop_token& stop, const std::function<void(QSize)>& takeSize,
                        const RowTaker& takeRow)
{
    const std::optional<JpegShape> whole = shape();
    if (!whole)
        return false;
    chooseColourModel(m_reader->codec(), m_colourTransform);
    if (!m_reader->start(eighthsFor(whole->size, longest), outputSpace(whole->channels), stop))
        return false;
    takeSize(m_reader->outputSize());
    std::vector<uint8_t> row(static_cast<size_t>(m_reader->outputSize().width() * whole->channels));
    while (!m_reader->isComplete()) {
        if (!m_reader->readRow(row.data()))
            return false;
        takeRow(row.data());
    }
    return !m_reader->errors().isDamaged();
}

} // namespace folvane
