#include "pdf/Document.h"

#include "pdf/Assembly.h"
#include "pdf/drawing/PageRasteriser.h"
#include "pdf/structure/DocumentData.h"
#include "pdf/structure/pageAttributes.h"

#include <algorithm>

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
    DrawingBudget budget(DrawingBudget::ofPicture, std::move(stop));
    return draw(index, pixels, turn, budget);
}

QImage Document::draw(int index, QSize pixels, int turn, DrawingBudget& budget)
{
    if (const auto known = m_data->notDrawnWithin.find(index);
        known != m_data->notDrawnWithin.end() && budget.time() <= known->second)
        return {};
    const quint64 failedBefore = failedReads();
    QImage image = drawAsItStands(index, pixels, turn, budget);
    if (failedReads() != failedBefore) {
        releaseDrawing(); // what drawing keeps of the file may have holes now
        return {};
    }
    if (image.isNull() && !budget.isOver() && m_data->readsFileAsItIs) {
        // The file may be stranger than it seemed; what a copy makes of it can be drawn, or nothing can.
        m_data->readsFileAsItIs = false;
        releaseDrawing();
        image = drawAsItStands(index, pixels, turn, budget);
    }
    if (image.isNull() && budget.isHopeless())
        m_data->notDrawnWithin[index] = std::max(budget.time(), m_data->notDrawnWithin[index]);
    return image;
}

QImage Document::drawAsItStands(int index, QSize pixels, int turn, DrawingBudget& budget)
{
    if (!m_data->rasteriser && !m_data->cannotBeDrawn) {
        m_data->rasteriser = rasteriserOf(*this, budget.stop());
        m_data->cannotBeDrawn = !m_data->rasteriser && !budget.stop().stop_requested();
    }
    return m_data->rasteriser ? m_data->rasteriser->draw(index, pixels, turn, budget) : QImage();
}

void Document::releaseDrawing()
{
    m_data->rasteriser.reset();
    m_data->cannotBeDrawn = false;
}

void Document::forgetFailedDrawings()
{
    m_data->notDrawnWithin.clear();
}

} // namespace folvane::pdf
