#include "engine/buildAsPictures.h"

#include "engine/EngineError.h"
#include "engine/pageImages.h"
#include "pdf/Document.h"
#include "pdf/FanOut.h"
#include "pdf/PageRasteriser.h"
#include "pdf/PicturePages.h"
#include "platform/Cancelled.h"
#include "platform/jpeg.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <memory>
#include <mutex>
#include <vector>

namespace folvane {

namespace {

/// Rasterisers over the same bytes, one for each thread that draws: each keeps its fonts from page to page.
class Rasterisers {
public:
    explicit Rasterisers(QByteArray bytes) : m_bytes(std::move(bytes)) {}

    QImage draw(int page, QSize pixels, const std::stop_token& stop)
    {
        std::unique_ptr<pdf::PageRasteriser> rasteriser = take();
        if (!rasteriser)
            return {};
        QImage image = rasteriser->draw(page, pixels, 0, stop);
        const std::lock_guard lock(m_mutex);
        m_free.push_back(std::move(rasteriser));
        return image;
    }

private:
    std::unique_ptr<pdf::PageRasteriser> take()
    {
        {
            const std::lock_guard lock(m_mutex);
            if (!m_free.empty()) {
                std::unique_ptr<pdf::PageRasteriser> last = std::move(m_free.back());
                m_free.pop_back();
                return last;
            }
        }
        return pdf::PageRasteriser::open(m_bytes);
    }

    const QByteArray m_bytes;
    std::mutex m_mutex;
    std::vector<std::unique_ptr<pdf::PageRasteriser>> m_free;
};

/// Takes pictures of pages on all cores and lays them out in order.
class PictureBuild {
public:
    PictureBuild(const QByteArray& flat, const CompressionStep& step, std::stop_token stop)
        : m_rasterisers(std::make_shared<Rasterisers>(flat)),
          m_step(step),
          m_stop(stop),
          m_work(std::move(stop))
    {
    }

    void add(int page, QSizeF points)
    {
        const double scale = m_step.maxPixels / std::max({points.width(), points.height(), 1.0});
        const QSize pixels = pixelSize(points, scale);
        const auto quality = static_cast<int>(std::lround(100 * m_step.jpegQuality));
        m_work.add([rasterisers = m_rasterisers, page, pixels, quality, stop = m_stop] {
            const QImage drawn = rasterisers->draw(page, pixels, stop);
            return drawn.isNull() ? QByteArray() : encodeJpeg(drawn, quality);
        });
        m_waiting.push_back({points, pixels});
        if (m_waiting.size() >= m_work.enough())
            settleOldest();
    }

    QByteArray finished(const QString& password)
    {
        while (!m_waiting.empty())
            settleOldest();
        return m_pages.written(password, m_stop);
    }

private:
    struct Waiting {
        QSizeF points;
        QSize pixels;
    };

    void settleOldest()
    {
        const QByteArray jpeg = m_work.takeNext();
        if (jpeg.isEmpty())
            throw EngineError(EngineError::Kind::WriteFailed);
        m_pages.add(jpeg, m_waiting.front().pixels, m_waiting.front().points);
        m_waiting.pop_front();
    }

    std::shared_ptr<Rasterisers> m_rasterisers;
    CompressionStep m_step;
    std::stop_token m_stop;
    pdf::FanOut<QByteArray> m_work;
    std::deque<Waiting> m_waiting; // in the order of m_work
    pdf::PicturePages m_pages;
};

} // namespace

QByteArray buildAsPictures(const QByteArray& flat, const CompressionStep& step, const QString& password,
                           std::stop_token stop)
{
    const std::unique_ptr<pdf::Document> document = pdf::Document::fromBytes(flat);
    if (!document)
        throw EngineError(EngineError::Kind::WriteFailed);
    PictureBuild build(flat, step, stop);
    for (int page = 0; page < document->pageCount(); ++page) {
        throwIfStopped(stop);
        const std::optional<pdf::PageGeometry> geometry = document->geometry(page);
        if (!geometry)
            throw EngineError(EngineError::Kind::MissingPage);
        build.add(page, geometry->displaySize(0));
    }
    return build.finished(password);
}

} // namespace folvane
