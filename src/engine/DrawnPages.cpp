#include "engine/DrawnPages.h"

#include "engine/EngineError.h"
#include "engine/pageImages.h"
#include "pdf/AreaScaler.h"
#include "pdf/Document.h"
#include "pdf/PageRasteriser.h"
#include "pdf/jpegSamples.h"

#include <algorithm>
#include <new>

namespace folvane {

namespace {

bool isGrey(const QImage& image)
{
    const int bytes = 3 * image.width();
    for (int y = 0; y < image.height(); ++y) {
        const uchar* row = image.constScanLine(y);
        unsigned differences = 0;
        for (int x = 0; x < bytes; x += 3)
            differences |= unsigned(row[x] ^ row[x + 1]) | unsigned(row[x] ^ row[x + 2]);
        if (differences)
            return false;
    }
    return true;
}

/// In one channel where there is no colour: a third of the work for all that follows.
pdf::ImageSamples samplesOf(const QImage& image)
{
    pdf::ImageSamples samples{image.size(), isGrey(image) ? 1 : 3, {}};
    samples.bytes.resize(samples.stride() * static_cast<size_t>(image.height()));
    const auto step = static_cast<size_t>(3 / samples.channels);
    for (int y = 0; y < image.height(); ++y) {
        const uchar* from = image.constScanLine(y);
        uint8_t* to = samples.row(y);
        for (size_t i = 0, count = samples.stride(); i < count; ++i)
            to[i] = from[step * i];
    }
    return samples;
}

std::vector<QSizeF> displaySizes(const QByteArray& flat)
{
    const std::unique_ptr<pdf::Document> document = pdf::Document::fromBytes(flat);
    if (!document)
        throw EngineError(EngineError::Kind::WriteFailed);
    std::vector<QSizeF> sizes;
    for (int page = 0; page < document->pageCount(); ++page) {
        const std::optional<pdf::PageGeometry> geometry = document->geometry(page);
        if (!geometry)
            throw EngineError(EngineError::Kind::MissingPage);
        sizes.push_back(geometry->displaySize(0));
    }
    return sizes;
}

} // namespace

DrawnPages::DrawnPages(QByteArray flat) : m_flat(std::move(flat)), m_sizes(displaySizes(m_flat)) {}

DrawnPages::~DrawnPages() = default;

QSize DrawnPages::pixels(int page, int longSide) const
{
    const QSizeF points = displaySize(page);
    return pixelSize(points, longSide / std::max({points.width(), points.height(), 1.0}));
}

pdf::PicturePages::Picture DrawnPages::picture(int page, int longSide, int quality,
                                               const std::stop_token& stop)
{
    const QSize wanted = pixels(page, longSide);
    const Samples drawn = longSide > fullSide ? draw(page, wanted, stop) : full(page, stop);
    if (!drawn || stop.stop_requested())
        return {};
    const pdf::ImageSamples samples = scaled(*drawn, wanted, stop);
    return {pdf::encodedJpeg(samples, quality, stop), wanted, samples.channels};
}

DrawnPages::Samples DrawnPages::full(int page, const std::stop_token& stop)
{
    const QByteArray key = QByteArray::number(page);
    if (const std::shared_ptr<const PackedSamples> known = m_full.find(key))
        return known->unpacked();
    Samples samples = draw(page, pixels(page, fullSide), stop);
    if (!samples || stop.stop_requested())
        return std::nullopt;
    try {
        const auto kept = std::make_shared<const PackedSamples>(*samples);
        m_full.insert(key, kept, kept->byteCount());
    } catch (const std::bad_alloc&) {
        // Drawn again then, for the next rung.
    }
    return samples;
}

DrawnPages::Samples DrawnPages::draw(int page, QSize pixels, const std::stop_token& stop)
{
    std::unique_ptr<pdf::PageRasteriser> rasteriser = takeRasteriser();
    if (!rasteriser)
        return std::nullopt;
    const QImage image = rasteriser->draw(page, pixels, 0, stop);
    {
        const std::lock_guard lock(m_mutex);
        m_free.push_back(std::move(rasteriser));
    }
    return image.isNull() ? std::nullopt : std::optional(samplesOf(image));
}

std::unique_ptr<pdf::PageRasteriser> DrawnPages::takeRasteriser()
{
    {
        const std::lock_guard lock(m_mutex);
        if (!m_free.empty()) {
            std::unique_ptr<pdf::PageRasteriser> last = std::move(m_free.back());
            m_free.pop_back();
            return last;
        }
    }
    return pdf::PageRasteriser::open(m_flat);
}

} // namespace folvane
