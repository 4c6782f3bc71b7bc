#include "pdf/images/SampleRows.h"

#include <stdexcept>

namespace folvane::pdf {

namespace {

/// Samples of 1, 2 or 4 bits, taken apart and multiplied by `step`.
void spread(const uint8_t* packed, size_t count, int bits, int step, uint8_t* to)
{
    const int perByte = 8 / bits, mask = (1 << bits) - 1;
    for (size_t i = 0; i < count; ++i) {
        const auto place = static_cast<int>(i % static_cast<size_t>(perByte));
        const int shift = 8 - bits * (place + 1);
        to[i] = static_cast<uint8_t>(((packed[i / static_cast<size_t>(perByte)] >> shift) & mask) * step);
    }
}

void takeHighBytes(const uint8_t* packed, size_t count, uint8_t* to)
{
    for (size_t i = 0; i < count; ++i)
        to[i] = packed[2 * i];
}

} // namespace

SampleRows::SampleRows(SampleLayout layout, RowTaker taker, std::stop_token stop)
    : Pipeline("samples", nullptr),
      m_layout(std::move(layout)),
      m_taker(std::move(taker)),
      m_stop(std::move(stop)),
      m_rowBytes(static_cast<size_t>(m_layout.rowBytes())),
      m_samples(static_cast<size_t>(m_layout.size.width()) * static_cast<size_t>(m_layout.channels))
{
    if (!m_layout.palette.isEmpty())
        m_colours.resize(m_samples.size() * static_cast<size_t>(m_layout.paletteChannels));
}

void SampleRows::write(const unsigned char* data, size_t length)
{
    while (length > 0 && !isComplete()) {
        if (m_packed.empty() && length >= m_rowBytes) {
            handOn(data);
            data += m_rowBytes;
            length -= m_rowBytes;
            continue;
        }
        const size_t count = std::min(length, m_rowBytes - m_packed.size());
        m_packed.insert(m_packed.end(), data, data + count);
        data += count;
        length -= count;
        if (m_packed.size() == m_rowBytes) {
            handOn(m_packed.data());
            m_packed.clear();
        }
    }
    if (isComplete())
        throw std::runtime_error("all rows are there"); // what follows may be any amount
}

void SampleRows::handOn(const uint8_t* packed)
{
    if (m_rows % 16 == 0 && m_stop.stop_requested())
        throw std::runtime_error("stopped");
    ++m_rows;
    const bool isNumber = !m_layout.palette.isEmpty();
    if (m_layout.bits < 8)
        spread(packed, m_samples.size(), m_layout.bits, isNumber ? 1 : 255 / ((1 << m_layout.bits) - 1),
               m_samples.data());
    else if (m_layout.bits == 16)
        takeHighBytes(packed, m_samples.size(), m_samples.data());
    else
        std::copy_n(packed, m_rowBytes, m_samples.data());
    if (isNumber)
        resolvePalette();
    m_taker(isNumber ? m_colours.data() : m_samples.data());
}

void SampleRows::resolvePalette()
{
    const auto* palette = reinterpret_cast<const uint8_t*>(m_layout.palette.constData());
    uint8_t* to = m_colours.data();
    for (const uint8_t sample : m_samples)
        to = std::copy_n(palette + sample * m_layout.paletteChannels, m_layout.paletteChannels, to);
}

} // namespace folvane::pdf
