#pragma once

#include "pictures/ImageSamples.h"

#include <stop_token>
#include <utility>

namespace folvane {

/// Makes a picture smaller, row by row: each new pixel is the average of the area that it covers.
class AreaScaler {
public:
    /// `to` must be no larger than `from` in either direction, and neither may be empty.
    AreaScaler(QSize from, QSize to, int channels);

    /// The next row from the top; rows beyond the last are dropped.
    void addRow(const uint8_t* row);
    /// As above, each pixel weighing as much as it is opaque (`opacity`, one byte a pixel): colours that nobody sees
    /// do not bleed into those that are seen.
    void addRow(const uint8_t* row, const uint8_t* opacity);
    /// The next rows from the top.
    void addRows(const SampleView& rows);

    bool isComplete() const { return m_rowsIn == m_from.height(); }
    /// The finished picture. Rows that never came are black.
    ImageSamples take() { return std::move(m_result); }
    /// Where a new pixel covers only transparent ones its colour is unknown; one byte a pixel, 1 for unknown. Empty when
    /// opacity was never told.
    std::vector<uint8_t> takeHoles() { return std::move(m_holes); }

private:
    void makeSums();
    void makeTaps();
    template <typename Sample> void accumulateRow(const Sample* row);
    void finishRow();
    template <int Channels> void averageAcross();
    void storeRow();

    QSize m_from;
    QSize m_to;
    int m_channels;
    int m_summed; // channels of the sums: one more for opacity
    int m_rowsIn = 0;
    int m_rowsOut = 0;
    int m_taps = 0;            // old pixels that a new one takes, in a row
    std::vector<int> m_firsts; // the first of them, for each new pixel
    std::vector<float> m_weights;
    std::vector<float> m_weighted; // one old row, multiplied by its opacity
    std::vector<float> m_sums;     // the old rows that one new row covers
    std::vector<float> m_averages; // one new row
    std::vector<uint8_t> m_holes;
    ImageSamples m_result;
};

/// The picture at a size that is no larger in either direction; of no use once a stop was asked for.
ImageSamples scaled(const SampleView& samples, QSize to, const std::stop_token& stop = {});

} // namespace folvane
