#include "pictures/AreaScaler.h"

namespace folvane {

namespace {

// Sums are of samples up to 255 with weights that add up to 1: below this nothing is seen.
constexpr float leastOpacity = 0.25F;

// Rows of sums and averages end with as many unused samples: a pixel is then read and written as one vector, with
// something of the next one.
constexpr size_t padding = 8;

uint8_t rounded(float value)
{
    return static_cast<uint8_t>(std::clamp(value + 0.5F, 0.0F, 255.0F));
}

// The loops over whole rows stand alone, on pointers that do not overlap: so the compiler makes vectors of them.

template <typename Sample>
void addWeighted(float* __restrict sums, const Sample* __restrict row, size_t count, float weight)
{
    for (size_t i = 0; i < count; ++i)
        sums[i] += weight * static_cast<float>(row[i]);
}

void storeRounded(uint8_t* __restrict to, const float* __restrict from, size_t count)
{
    for (size_t i = 0; i < count; ++i)
        to[i] = rounded(from[i]);
}

} // namespace

AreaScaler::AreaScaler(QSize from, QSize to, int channels)
    : m_from(from),
      m_to(to),
      m_channels(channels),
      m_summed(channels),
      m_result{to, channels, std::vector<uint8_t>(static_cast<size_t>(pixelCount(to) * channels))}
{
    makeTaps();
    makeSums();
}

void AreaScaler::makeSums()
{
    const auto channels = static_cast<size_t>(m_summed);
    m_sums.assign(static_cast<size_t>(m_from.width()) * channels + padding, 0.0F);
    m_averages.resize(static_cast<size_t>(m_to.width()) * channels + padding);
}

// In units in which an old pixel is `to` wide and a new one `from`, all edges are whole numbers. Every new pixel takes as
// many old ones, some of them with no weight: loops that are always as long run faster than shorter ones.
void AreaScaler::makeTaps()
{
    const qint64 from = m_from.width(), to = m_to.width();
    m_taps = static_cast<int>(std::min(from, (from - 1) / to + 2));
    for (qint64 x = 0; x < to; ++x) {
        const qint64 left = x * from, right = left + from;
        const qint64 first = std::min(left / to, from - m_taps);
        m_firsts.push_back(static_cast<int>(first));
        for (qint64 i = first; i < first + m_taps; ++i) {
            const qint64 covered = std::min(right, (i + 1) * to) - std::max(left, i * to);
            m_weights.push_back(static_cast<float>(std::max<qint64>(covered, 0)) / static_cast<float>(from));
        }
    }
}

void AreaScaler::addRow(const uint8_t* row)
{
    if (isComplete())
        return;
    if (m_from == m_to)
        std::copy_n(row, m_result.stride(), m_result.row(m_rowsIn++));
    else
        accumulateRow(row);
}

void AreaScaler::addRow(const uint8_t* row, const uint8_t* opacity)
{
    if (isComplete())
        return;
    if (m_summed == m_channels) {
        m_summed = m_channels + 1;
        m_weighted.resize(static_cast<size_t>(m_from.width()) * static_cast<size_t>(m_summed));
        makeSums();
        m_holes.resize(static_cast<size_t>(pixelCount(m_to)));
    }
    float* to = m_weighted.data();
    for (int x = 0; x < m_from.width(); ++x) {
        const auto weight = static_cast<float>(opacity[x]);
        for (int c = 0; c < m_channels; ++c)
            *to++ = weight * static_cast<float>(*row++);
        *to++ = weight;
    }
    accumulateRow(m_weighted.data());
}

void AreaScaler::addRows(const SampleView& rows)
{
    for (int y = 0; y < rows.size.height(); ++y)
        addRow(rows.row(y));
}

template <typename Sample> void AreaScaler::accumulateRow(const Sample* row)
{
    const qint64 from = m_from.height(), to = m_to.height();
    const qint64 top = m_rowsIn * to, bottom = top + to;
    const auto add = [&](qint64 covered) {
        addWeighted(m_sums.data(), row, m_sums.size() - padding,
                    static_cast<float>(covered) / static_cast<float>(from));
    };
    const qint64 end = (m_rowsOut + 1) * from; // of the new row that is being summed
    add(std::min(bottom, end) - top);
    ++m_rowsIn;
    if (bottom < end)
        return;
    finishRow();
    if (bottom > end)
        add(bottom - end);
}

void AreaScaler::finishRow()
{
    switch (m_summed) {
    case 1: averageAcross<1>(); break;
    case 2: averageAcross<2>(); break;
    case 3: averageAcross<3>(); break;
    case 4: averageAcross<4>(); break;
    default: averageAcross<5>(); break;
    }
    storeRow();
    std::fill(m_sums.begin(), m_sums.end(), 0.0F);
    ++m_rowsOut;
}

template <int Channels> void AreaScaler::averageAcross()
{
    constexpr int lanes = Channels == 1 ? 1 : Channels <= 4 ? 4 : padding;
    const int taps = m_taps;
    const float* weight = m_weights.data();
    float* to = m_averages.data();
    for (const int first : m_firsts) {
        const float* from = m_sums.data() + static_cast<size_t>(first) * Channels;
        float sum[lanes] = {};
        for (int i = 0; i < taps; ++i, from += Channels, ++weight) {
            for (int lane = 0; lane < lanes; ++lane)
                sum[lane] += *weight * from[lane];
        }
        std::copy_n(sum, lanes, to);
        to += Channels;
    }
}

void AreaScaler::storeRow()
{
    uint8_t* to = m_result.row(m_rowsOut);
    const float* from = m_averages.data();
    if (m_summed == m_channels) {
        storeRounded(to, from, m_result.stride());
        return;
    }
    uint8_t* hole = m_holes.data() + static_cast<size_t>(m_rowsOut) * static_cast<size_t>(m_to.width());
    for (int x = 0; x < m_to.width(); ++x, from += m_summed) {
        const float opacity = from[m_channels];
        hole[x] = opacity < leastOpacity;
        for (int c = 0; c < m_channels; ++c)
            *to++ = hole[x] ? uint8_t(0) : rounded(from[c] / opacity);
    }
}

ImageSamples scaled(const SampleView& samples, QSize to, const std::stop_token& stop)
{
    AreaScaler scaler(samples.size, to, samples.channels);
    for (int y = 0; y < samples.size.height() && !stop.stop_requested(); ++y)
        scaler.addRow(samples.row(y));
    return scaler.take();
}

} // namespace folvane
