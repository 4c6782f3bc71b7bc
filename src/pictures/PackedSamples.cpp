#include "pictures/PackedSamples.h"

#include <new>

#include <zstd.h>

namespace folvane {

namespace {

constexpr int fastestLevel = 1;

QByteArray packed(const std::vector<uint8_t>& samples)
{
    QByteArray bytes(static_cast<qsizetype>(ZSTD_compressBound(samples.size())), Qt::Uninitialized);
    const size_t used = ZSTD_compress(bytes.data(), static_cast<size_t>(bytes.size()), samples.data(),
                                      samples.size(), fastestLevel);
    if (ZSTD_isError(used))
        throw std::bad_alloc(); // nothing else can go wrong where there is room for the worst case
    bytes.resize(static_cast<qsizetype>(used));
    bytes.squeeze();
    return bytes;
}

/// What each sample has more than the one left of it has more than theirs in the row above: close to nothing where
/// colours run into each other.
ImageSamples differences(const ImageSamples& samples)
{
    ImageSamples result = samples;
    const auto across = static_cast<size_t>(samples.channels);
    for (int y = samples.size.height() - 1; y >= 0; --y) {
        uint8_t* row = result.row(y);
        const uint8_t* above = y > 0 ? samples.row(y - 1) : nullptr;
        for (size_t x = samples.stride(); above && x-- > 0;)
            row[x] = static_cast<uint8_t>(row[x] - above[x]);
        for (size_t x = samples.stride(); x-- > across;)
            row[x] = static_cast<uint8_t>(row[x] - row[x - across]);
    }
    return result;
}

void addUp(ImageSamples& differences)
{
    const auto across = static_cast<size_t>(differences.channels);
    for (int y = 0; y < differences.size.height(); ++y) {
        uint8_t* row = differences.row(y);
        const uint8_t* above = y > 0 ? differences.row(y - 1) : nullptr;
        for (size_t x = across; x < differences.stride(); ++x)
            row[x] = static_cast<uint8_t>(row[x] + row[x - across]);
        for (size_t x = 0; above && x < differences.stride(); ++x)
            row[x] = static_cast<uint8_t>(row[x] + above[x]);
    }
}

} // namespace

PackedSamples::PackedSamples(const ImageSamples& samples, Effort effort)
    : m_size(samples.size), m_channels(samples.channels), m_bytes(packed(samples.bytes))
{
    if (effort == Effort::Quick)
        return;
    QByteArray bytes = packed(differences(samples).bytes);
    m_areDifferences = bytes.size() < m_bytes.size();
    if (m_areDifferences)
        m_bytes = std::move(bytes);
}

std::optional<ImageSamples> PackedSamples::unpacked() const
{
    ImageSamples samples{m_size, m_channels, {}};
    samples.bytes.resize(samples.stride() * static_cast<size_t>(m_size.height()));
    const size_t found =
        ZSTD_decompress(samples.bytes.data(), samples.bytes.size(), m_bytes.constData(), byteCount());
    if (found != samples.bytes.size())
        return std::nullopt;
    if (m_areDifferences)
        addUp(samples);
    return samples;
}

} // namespace folvane
