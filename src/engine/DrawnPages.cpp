#include "engine/DrawnPages.h"

#include "engine/EngineError.h"
#include "engine/pixelSize.h"
#include "pdf/Document.h"
#include "pdf/drawing/PageRasteriser.h"
#include "pictures/AreaScaler.h"
#include "pictures/jpegEncoding.h"
#include "pictures/samplesOf.h"

#include <algorithm>
#include <new>

namespace folvane {

namespace {

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
    const ImageSamples samples = scaled(drawn->view(), wanted, stop);
    return {encodeJpeg(samples.view(), quality, stop), wanted, samples.channels};
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
    std::unique_ptr<pdf::PageRasteriser> rasteriser = takeRasteriser(stop);
    if (!rasteriser)
        return std::nullopt;
    const QImage image = rasteriser->draw(page, pixels, 0, stop);
    {
        const std::lock_guard lock(m_mutex);
        m_free.push_back(std::move(rasteriser));
    }
    return image.isNull() ? std::nullopt : std::optional(samplesOf(image));
}

std::unique_ptr<pdf::PageRasteriser> DrawnPages::takeRasteriser(const std::stop_token& stop)
{
    {
        const std::lock_guard lock(m_mutex);
        if (!m_free.empty()) {
            std::unique_ptr<pdf::PageRasteriser> last = std::move(m_free.back());
            m_free.pop_back();
            return last;
        }
    }
    return pdf::PageRasteriser::open(m_flat, stop);
}

} // namespace folvane
