#include "pdf/Document.h"

#include "pdf/structure/DocumentData.h"
#include "pdf/structure/pageAttributes.h"

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

} // namespace folvane::pdf
