#include "engine/buildAsPictures.h"

#include "engine/EngineError.h"
#include "pdf/PicturePages.h"
#include "pictures/FanOut.h"
#include "platform/tasks/Cancelled.h"

#include <cmath>

namespace folvane {

namespace {

/// Takes pictures of pages on all cores and lays them out in order.
class PictureBuild {
public:
    PictureBuild(std::shared_ptr<DrawnPages> pages, const CompressionStep& step, std::stop_token stop)
        : m_drawn(std::move(pages)), m_step(step), m_stop(stop), m_work(std::move(stop))
    {
    }

    void add(int page)
    {
        const auto quality = static_cast<int>(std::lround(100 * m_step.jpegQuality));
        m_work.add([drawn = m_drawn, page, longSide = m_step.maxPixels, quality, stop = m_stop] {
            return drawn->picture(page, longSide, quality, stop);
        });
        if (m_work.waiting() >= m_work.enough())
            settleOldest();
    }

    QByteArray finished(const QString& password)
    {
        while (m_work.waiting() > 0)
            settleOldest();
        return m_pages.written(password, m_stop);
    }

private:
    void settleOldest()
    {
        const pdf::PicturePages::Picture picture = m_work.takeNext();
        if (picture.jpeg.isEmpty())
            throw EngineError(EngineError::Kind::WriteFailed);
        m_pages.add(picture, m_drawn->displaySize(m_settled));
        ++m_settled;
    }

    std::shared_ptr<DrawnPages> m_drawn;
    CompressionStep m_step;
    std::stop_token m_stop;
    FanOut<pdf::PicturePages::Picture> m_work;
    int m_settled = 0;
    pdf::PicturePages m_pages;
};

} // namespace

QByteArray buildAsPictures(const std::shared_ptr<DrawnPages>& pages, const CompressionStep& step,
                           const QString& password, std::stop_token stop)
{
    PictureBuild build(pages, step, stop);
    for (int page = 0; page < pages->count(); ++page) {
        throwIfStopped(stop);
        build.add(page);
    }
    return build.finished(password);
}

} // namespace folvane
