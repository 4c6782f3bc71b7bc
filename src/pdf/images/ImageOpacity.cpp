#include "pdf/images/ImageOpacity.h"

namespace folvane::pdf {

ImageOpacity::ImageOpacity(ImageSamples mask, bool inverted) : m_mask(std::move(mask))
{
    if (!inverted)
        return;
    for (uint8_t& sample : m_mask.bytes)
        sample = static_cast<uint8_t>(255 - sample);
}

const uint8_t* ImageOpacity::row(int y, QSize picture)
{
    const qint64 width = m_mask.size.width(), height = m_mask.size.height();
    const uint8_t* from = m_mask.row(static_cast<int>(y * height / picture.height()));
    if (width == picture.width())
        return from;
    m_row.resize(static_cast<size_t>(picture.width()));
    for (int x = 0; x < picture.width(); ++x)
        m_row[static_cast<size_t>(x)] = from[x * width / picture.width()];
    return m_row.data();
}

} // namespace folvane::pdf
