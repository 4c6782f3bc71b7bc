#include "pdf/structure/predictors.h"

#include <algorithm>
#include <cstdlib>

namespace folvane::pdf {

namespace {

constexpr long long longestRow = 16LL << 20;

using Row = std::vector<unsigned char>;

/// Cuts what flows through into rows; the last one may be cut off, and is filled up with zeros.
class RowPipeline : public Pipeline {
public:
    RowPipeline(const char* name, Pipeline* next, size_t rowBytes) : Pipeline(name, next), m_row(rowBytes) {}

    void write(const unsigned char* data, size_t length) override
    {
        while (length > 0) {
            const size_t count = std::min(length, m_row.size() - m_filled);
            std::copy_n(data, count, m_row.begin() + static_cast<std::ptrdiff_t>(m_filled));
            m_filled += count;
            data += count;
            length -= count;
            if (m_filled == m_row.size())
                endRow();
        }
    }

    void finish() override
    {
        if (m_filled > 0) {
            std::fill(m_row.begin() + static_cast<std::ptrdiff_t>(m_filled), m_row.end(), 0);
            endRow();
        }
        getNext()->finish();
    }

protected:
    virtual void take(Row& row) = 0;

private:
    void endRow()
    {
        m_filled = 0;
        take(m_row);
    }

    Row m_row;
    size_t m_filled = 0;
};

int paeth(int left, int above, int aboveLeft)
{
    const int estimate = left + above - aboveLeft;
    const int toLeft = std::abs(estimate - left);
    const int toAbove = std::abs(estimate - above);
    const int toAboveLeft = std::abs(estimate - aboveLeft);
    if (toLeft <= toAbove && toLeft <= toAboveLeft)
        return left;
    return toAbove <= toAboveLeft ? above : aboveLeft;
}

/// Rows that tell their own way of prediction in a byte before them (ISO/IEC 15948, 9).
class PngRows : public RowPipeline {
public:
    PngRows(const PredictorParameters& parameters, Pipeline* next)
        : RowPipeline("png rows", next, static_cast<size_t>(parameters.rowBytes()) + 1),
          m_above(static_cast<size_t>(parameters.rowBytes()) + 1),
          m_pixel(static_cast<size_t>(std::max((parameters.colours * parameters.bits + 7) / 8, 1LL)))
    {
    }

private:
    int left(const Row& row, size_t i) const { return i > m_pixel ? row[i - m_pixel] : 0; }

    int aboveLeft(size_t i) const { return i > m_pixel ? m_above[i - m_pixel] : 0; }

    template <typename Predicted> static void add(Row& row, Predicted predicted)
    {
        for (size_t i = 1; i < row.size(); ++i)
            row[i] = static_cast<unsigned char>(row[i] + predicted(i));
    }

    void take(Row& row) override
    {
        switch (row[0]) {
        case 1: add(row, [&](size_t i) { return left(row, i); }); break;
        case 2: add(row, [&](size_t i) { return m_above[i]; }); break;
        case 3: add(row, [&](size_t i) { return (left(row, i) + m_above[i]) / 2; }); break;
        case 4: add(row, [&](size_t i) { return paeth(left(row, i), m_above[i], aboveLeft(i)); }); break;
        default: break;
        }
        getNext()->write(row.data() + 1, row.size() - 1);
        m_above.swap(row);
    }

    Row m_above; // with its first byte
    size_t m_pixel;
};

/// Rows in which each colour is the difference from the pixel at its left (TIFF 6.0, section 14).
class TiffRows : public RowPipeline {
public:
    TiffRows(const PredictorParameters& parameters, Pipeline* next)
        : RowPipeline("tiff rows", next, static_cast<size_t>(parameters.rowBytes())),
          m_colours(static_cast<size_t>(parameters.colours)),
          m_bits(static_cast<unsigned>(parameters.bits)),
          m_samples(static_cast<size_t>(parameters.columns * parameters.colours))
    {
    }

private:
    void take(Row& row) override
    {
        if (m_bits == 8)
            addBytes(row);
        else
            addSamples(row);
        getNext()->write(row.data(), row.size());
    }

    void addBytes(Row& row) const
    {
        for (size_t i = m_colours; i < row.size(); ++i)
            row[i] = static_cast<unsigned char>(row[i] + row[i - m_colours]);
    }

    void addSamples(Row& row) const
    {
        for (size_t i = m_colours; i < m_samples; ++i)
            put(row, i, sample(row, i) + sample(row, i - m_colours));
    }

    unsigned sample(const Row& row, size_t index) const
    {
        unsigned value = 0;
        for (size_t bit = index * m_bits; bit < (index + 1) * m_bits; ++bit)
            value = value << 1 | ((row[bit / 8] >> (7 - bit % 8)) & 1U);
        return value;
    }

    void put(Row& row, size_t index, unsigned value) const
    {
        for (size_t bit = (index + 1) * m_bits; bit-- > index * m_bits; value >>= 1) {
            const unsigned mask = 0x80U >> (bit % 8);
            const unsigned rest = row[bit / 8] & ~mask;
            row[bit / 8] = static_cast<unsigned char>(rest | ((value & 1U) != 0 ? mask : 0U));
        }
    }

    size_t m_colours;
    unsigned m_bits;
    size_t m_samples;
};

} // namespace

bool PredictorParameters::isBounded() const
{
    if (predictor == 1)
        return true;
    if (!isPng() && !isTiff())
        return false;
    const bool areSound = columns > 0 && columns <= longestRow && colours > 0 && colours <= longestRow
                          && bits > 0 && bits <= 16;
    return areSound && columns * colours <= longestRow * 8 && rowBytes() <= longestRow;
}

std::unique_ptr<Pipeline> undonePredictor(const PredictorParameters& parameters, Pipeline* next)
{
    if (parameters.isPng())
        return std::make_unique<PngRows>(parameters, next);
    if (parameters.isTiff())
        return std::make_unique<TiffRows>(parameters, next);
    return nullptr;
}

} // namespace folvane::pdf
