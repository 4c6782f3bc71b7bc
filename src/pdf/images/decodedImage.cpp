#include "pdf/images/decodedImage.h"

#include "pdf/images/ImageOpacity.h"
#include "pdf/images/SampleRows.h"
#include "pdf/images/drawnImage.h"
#include "pictures/AreaScaler.h"
#include "pictures/fillHoles.h"

namespace folvane::pdf {

namespace {

std::optional<ImageOpacity> opacityFor(const StoredImage& image, QSize decoded, const std::stop_token& stop)
{
    if (!image.opacity)
        return std::nullopt;
    const int longest = std::max(decoded.width(), decoded.height());
    std::optional<ImageSamples> mask = decodedImage(*image.opacity, longest, stop);
    if (!mask || mask->channels != 1)
        return std::nullopt;
    return ImageOpacity(std::move(*mask), image.opacityIsInverted);
}

/// Takes the rows of an image as they are decoded and makes the wanted size of them.
class Shrinker {
public:
    Shrinker(const StoredImage& image, int longest, const std::stop_token& stop)
        : m_image(image), m_longest(longest), m_stop(stop)
    {
    }

    void start(QSize decoded)
    {
        m_decoded = decoded;
        m_scaler.emplace(decoded, sizeWithin(decoded, m_longest), m_image.decodedChannels());
        m_opacity = opacityFor(m_image, decoded, m_stop);
    }

    void add(const uint8_t* row)
    {
        if (m_opacity)
            m_scaler->addRow(row, m_opacity->row(m_row, m_decoded));
        else
            m_scaler->addRow(row);
        ++m_row;
    }

    ImageSamples take()
    {
        ImageSamples samples = m_scaler->take();
        fillHoles(samples, m_scaler->takeHoles(), m_stop);
        return samples;
    }

private:
    const StoredImage& m_image;
    int m_longest;
    const std::stop_token& m_stop;
    QSize m_decoded;
    std::optional<AreaScaler> m_scaler;
    std::optional<ImageOpacity> m_opacity;
    int m_row = 0;
};

std::optional<ImageSamples> fromSamples(const StoredImage& image, int longest, const std::stop_token& stop)
{
    const SampleLayout layout{image.size, image.channels, image.bits, image.palette, image.paletteChannels};
    Shrinker shrinker(image, longest, stop);
    shrinker.start(image.size);
    SampleRows rows(layout, [&](const uint8_t* row) { shrinker.add(row); }, stop);
    unpack(image.bytes, image.filters, rows);
    return rows.isComplete() ? std::optional(shrinker.take()) : std::nullopt;
}

std::optional<ImageSamples> fromJpeg(const StoredImage& image, int longest, const std::stop_token& stop)
{
    const std::optional<QByteArray> bytes =
        unpacked(image.bytes, image.filters, unpackedJpegLimit(image.bytes.size()), stop);
    if (!bytes)
        return std::nullopt;
    JpegStream jpeg(*bytes, image.colourTransform);
    const std::optional<JpegShape> shape = jpeg.shape();
    if (!shape || shape->channels != image.channels)
        return std::nullopt;
    if (!image.filters.empty() && shape->size != image.size)
        return std::nullopt; // nobody could tell how much memory it takes
    Shrinker shrinker(image, longest, stop);
    const bool isWhole = jpeg.decode(
        longest, stop, [&](QSize size) { shrinker.start(size); },
        [&](const uint8_t* row) { shrinker.add(row); });
    return isWhole ? std::optional(shrinker.take()) : std::nullopt;
}

std::optional<ImageSamples> fromDrawing(const StoredImage& image, int longest, const std::stop_token& stop)
{
    const QSize size = sizeWithin(image.size, longest);
    std::optional<ImageSamples> samples = drawnImage(image.document, size, image.drawnChannels, stop);
    std::optional<ImageOpacity> opacity = samples ? opacityFor(image, size, stop) : std::nullopt;
    if (!opacity)
        return samples;
    std::vector<uint8_t> holes;
    for (int y = 0; y < size.height(); ++y) {
        const uint8_t* row = opacity->row(y, size);
        for (int x = 0; x < size.width(); ++x)
            holes.push_back(row[x] == 0);
    }
    fillHoles(*samples, holes, stop);
    return samples;
}

} // namespace

std::optional<ImageSamples> decodedImage(const StoredImage& image, int longest, const std::stop_token& stop)
{
    switch (image.road) {
    case StoredImage::Road::Samples: return fromSamples(image, longest, stop);
    case StoredImage::Road::Jpeg: return fromJpeg(image, longest, stop);
    case StoredImage::Road::Drawn: break;
    }
    return fromDrawing(image, longest, stop);
}

} // namespace folvane::pdf
