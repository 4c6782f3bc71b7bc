#include "engine/PackedSamples.h"

#include <new>

#include <zstd.h>

namespace folvane {

namespace {

constexpr int fastestLevel = 1;

}

PackedSamples::PackedSamples(const pdf::ImageSamples& samples)
    : m_size(samples.size), m_channels(samples.channels)
{
    const size_t size = samples.bytes.size();
    m_bytes.resize(static_cast<qsizetype>(ZSTD_compressBound(size)));
    const size_t used = ZSTD_compress(m_bytes.data(), static_cast<size_t>(m_bytes.size()),
                                      samples.bytes.data(), size, fastestLevel);
    if (ZSTD_isError(used))
        throw std::bad_alloc(); // nothing else can go wrong where there is room for the worst case
    m_bytes.resize(static_cast<qsizetype>(used));
    m_bytes.squeeze();
}

std::optional<pdf::ImageSamples> PackedSamples::unpacked() const
{
    pdf::ImageSamples samples{m_size, m_channels, {}};
    samples.bytes.resize(samples.stride() * static_cast<size_t>(m_size.height()));
    const size_t found =
        ZSTD_decompress(samples.bytes.data(), samples.bytes.size(), m_bytes.constData(), byteCount());
    return found == samples.bytes.size() ? std::optional(std::move(samples)) : std::nullopt;
}

} // namespace folvane
