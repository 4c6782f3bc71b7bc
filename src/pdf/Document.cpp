#include "pdf/Document.h"

#include "pdf/Assembly.h"
#include "pdf/DocumentData.h"
#include "pdf/PageRasteriser.h"
#include "pdf/pageAttributes.h"

namespace folvane::pdf {

Document::Document(std::unique_ptr<DocumentData> data) : m_data(std::move(data)) {}

Document::~Document() = default;

int Document::pageCount() const
{
    return static_cast<int>(m_data->pages.size());
}

std::optional<PageGeometry> Document::geometry(int index) const
{
    if (index < 0 || index >= pageCount())
        return std::nullopt;
    return pageGeometry(m_data->pages[static_cast<size_t>(index)]);
}

std::optional<int> Document::rotation(int index) const
{
    if (index < 0 || index >= pageCount())
        return std::nullopt;
    return pageRotation(m_data->pages[static_cast<size_t>(index)]);
}

bool Document::isIntact() const
{
    return !m_data->file || m_data->file->unchanged();
}

quint64 Document::failedReads() const
{
    return m_data->file ? m_data->file->failedReads() : 0;
}

QImage Document::draw(int index, QSize pixels, int turn, std::stop_token stop)
{
    const quint64 failedBefore = failedReads();
    QImage image = drawAsItStands(index, pixels, turn, stop);
    if (failedReads() != failedBefore) {
        releaseDrawing(); // what drawing keeps of the file may have holes now
        return {};
    }
    if (!image.isNull() || stop.stop_requested() || !m_data->readsFileAsItIs)
        return image;
    // The file may be stranger than it seemed; what a copy makes of it can be drawn, or nothing can.
    m_data->readsFileAsItIs = false;
    releaseDrawing();
    return drawAsItStands(index, pixels, turn, stop);
}

QImage Document::drawAsItStands(int index, QSize pixels, int turn, const std::stop_token& stop)
{
    if (!m_data->rasteriser && !m_data->cannotBeDrawn) {
        m_data->rasteriser = rasteriserOf(*this, stop);
        m_data->cannotBeDrawn = !m_data->rasteriser && !stop.stop_requested();
    }
    return m_data->rasteriser ? m_data->rasteriser->draw(index, pixels, turn, stop) : QImage();
}

void Document::releaseDrawing()
{
    m_data->rasteriser.reset();
    m_data->cannotBeDrawn = false;
}

} // namespace folvane::pdf
