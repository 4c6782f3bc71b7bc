#include "pdf/stamping/CompactStamps.h"

#include "pictures/AreaScaler.h"
#include "pictures/jpegEncoding.h"
#include "pictures/samplesOf.h"
#include "stamps/storedPicture.h"

#include <array>
#include <limits>

namespace folvane::pdf {

namespace {

constexpr uint8_t inkFrom = 201; // alpha from which a pixel tells the ink's colour
constexpr uint8_t unseenUpTo = 7;

using Colour = std::array<uint8_t, 3>;

/// Black where no pixel is opaque enough to tell.
Colour inkColour(const ImageSamples& pixels)
{
    std::array<double, 3> sums{};
    size_t count = 0;
    for (size_t i = 0; i < pixels.bytes.size(); i += 4) {
        const uint8_t alpha = pixels.bytes[i + 3];
        if (alpha < inkFrom)
            continue;
        ++count;
        for (size_t c = 0; c < sums.size(); ++c)
            sums[c] += double(pixels.bytes[i + c]) * 255 / alpha;
    }
    Colour colour{};
    for (size_t c = 0; count > 0 && c < colour.size(); ++c)
        colour[c] = static_cast<uint8_t>(std::min(sums[c] / double(count), 255.0));
    return colour;
}

ImageSamples coloursOf(const ImageSamples& pixels)
{
    const Colour ink = inkColour(pixels);
    ImageSamples colours{pixels.size, 3, {}};
    colours.bytes.reserve(pixels.bytes.size() / 4 * 3);
    for (size_t i = 0; i < pixels.bytes.size(); i += 4) {
        const int alpha = pixels.bytes[i + 3];
        for (size_t c = 0; c < ink.size(); ++c)
            colours.bytes.push_back(
                alpha <= unseenUpTo ? ink[c]
                                    : static_cast<uint8_t>(std::min(pixels.bytes[i + c] * 255 / alpha, 255)));
    }
    return colours;
}

QByteArray alphaOf(const ImageSamples& pixels)
{
    QByteArray alpha(qsizetype(pixels.bytes.size() / 4), Qt::Uninitialized);
    for (qsizetype i = 0; i < alpha.size(); ++i)
        alpha[i] = static_cast<char>(pixels.bytes[size_t(4 * i + 3)]);
    return alpha;
}

std::shared_ptr<const CompactStamp> compactStamp(const QImage& picture, QSize size, int quality)
{
    const QImage full = picture.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    const ImageSamples pixels = scaled(viewOf(full), size);
    const QByteArray jpeg = encodeJpeg(coloursOf(pixels).view(), quality, {}, Chroma::Full);
    return jpeg.isEmpty() ? nullptr
                          : std::make_shared<CompactStamp>(CompactStamp{size, jpeg, alphaOf(pixels)});
}

} // namespace

QImage CompactStamps::picture(const QUrl& file)
{
    QImage picture = m_pictures.value(file);
    if (picture.isNull()) {
        picture = storedPicture(file.toLocalFile(), std::numeric_limits<qint64>::max());
        if (!picture.isNull())
            m_pictures.insert(file, picture);
    }
    return picture;
}

QSize CompactStamps::pixels(const QUrl& file)
{
    return picture(file).size();
}

std::shared_ptr<const CompactStamp> CompactStamps::compact(const QUrl& file, int longSide, int quality)
{
    const QImage full = picture(file);
    if (full.isNull())
        return nullptr;
    const QSize size = sizeWithin(full.size(), longSide);
    const std::tuple key(file, std::max(size.width(), size.height()), quality);
    const auto known = m_compact.find(key);
    if (known != m_compact.end())
        return known->second;
    std::shared_ptr<const CompactStamp> made = compactStamp(full, size, quality);
    if (made)
        m_compact.emplace(key, made);
    return made;
}

} // namespace folvane::pdf
