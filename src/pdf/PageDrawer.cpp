#include "pdf/PageDrawer.h"

#include "pdf/Assembly.h"
#include "pdf/Document.h"
#include "pdf/drawing/PageRasteriser.h"
#include "pdf/structure/DocumentData.h"

#include <algorithm>

namespace folvane::pdf {

PageDrawer::PageDrawer(Document& document)
    : m_document(document), m_drawsFile(document.data().readsFileAsItIs)
{
}

PageDrawer::~PageDrawer() = default;

QImage PageDrawer::draw(int index, QSize pixels, int turn, std::stop_token stop)
{
    DrawingBudget budget(DrawingBudget::ofPicture, std::move(stop));
    return draw(index, pixels, turn, budget);
}

QImage PageDrawer::draw(int index, QSize pixels, int turn, DrawingBudget& budget)
{
    if (const auto known = m_notDrawnWithin.find(index);
        known != m_notDrawnWithin.end() && budget.time() <= known->second)
        return {};
    const quint64 failedBefore = m_document.failedReads();
    QImage image = drawAsItStands(index, pixels, turn, budget);
    if (m_document.failedReads() != failedBefore) {
        release(); // what drawing keeps of the file may have holes now
        return {};
    }
    if (image.isNull() && !budget.isOver() && m_drawsFile) {
        // The file may be stranger than it seemed; what a copy makes of it can be drawn, or nothing can.
        m_drawsFile = false;
        release();
        image = drawAsItStands(index, pixels, turn, budget);
    }
    if (image.isNull() && budget.isHopeless())
        m_notDrawnWithin[index] = std::max(budget.time(), m_notDrawnWithin[index]);
    return image;
}

QImage PageDrawer::drawAsItStands(int index, QSize pixels, int turn, DrawingBudget& budget)
{
    if (!m_rasteriser && !m_cannotBeDrawn) {
        m_rasteriser = rasteriser(budget.stop());
        m_cannotBeDrawn = !m_rasteriser && !budget.stop().stop_requested();
    }
    return m_rasteriser ? m_rasteriser->draw(index, pixels, turn, budget) : QImage();
}

std::unique_ptr<PageRasteriser> PageDrawer::rasteriser(const std::stop_token& stop)
{
    const DocumentData& data = m_document.data();
    if (m_drawsFile) {
        std::unique_ptr<PageRasteriser> direct = PageRasteriser::open(data.file, stop);
        if (direct && direct->pageCount() == m_document.pageCount())
            return direct;
    }
    if (!data.file && !data.bytes.isEmpty())
        return PageRasteriser::open(data.bytes, stop);
    return rasteriserOfCopy(stop);
}

std::unique_ptr<PageRasteriser> PageDrawer::rasteriserOfCopy(const std::stop_token& stop)
{
    std::vector<PageCopy> all;
    for (int i = 0; i < m_document.pageCount(); ++i)
        all.push_back({&m_document, i, m_document.rotation(i).value_or(0)});
    try {
        return PageRasteriser::open(Assembly(all, stop).written({}, stop), stop);
    } catch (const std::exception&) {
        return nullptr; // a page that cannot be drawn is a placeholder, not an error
    }
}

void PageDrawer::release()
{
    m_rasteriser.reset();
    m_cannotBeDrawn = false;
}

void PageDrawer::forgetFailures()
{
    m_notDrawnWithin.clear();
}

} // namespace folvane::pdf
