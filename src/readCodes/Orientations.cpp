#include "readCodes/Orientations.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace folvane {

namespace {

struct Changes {
    int along = 0, across = 0, all = 0;
};

/// Of two rows, from one column to another. From the corners of each two by two pixels, which tell even bars of one pixel.
Changes changesBetween(const uchar* row, const uchar* below, int from, int to)
{
    Changes sum;
    for (int x = from; x < to; ++x) {
        const int falling = below[x + 1] - row[x];
        const int rising = row[x + 1] - below[x];
        const int right = falling + rising;
        const int down = falling - rising;
        sum.along += right * right - down * down;
        sum.across += 2 * right * down;
        sum.all += right * right + down * down;
    }
    return sum;
}

} // namespace

Orientations::Orientations(const cv::Mat& picture, int cell)
    : m_along(cv::Mat_<float>::zeros(picture.rows / cell, picture.cols / cell)),
      m_across(m_along.clone()),
      m_all(m_along.clone())
{
    const int rows = std::min(m_all.rows * cell, picture.rows - 1);
    for (int y = 0; y < rows; ++y)
        for (int column = 0; column < m_all.cols; ++column) {
            const int end = std::min((column + 1) * cell, picture.cols - 1);
            const Changes sum = changesBetween(picture.ptr(y), picture.ptr(y + 1), column * cell, end);
            const auto share = [cell](int changes) { return float(changes) / float(cell * cell); };
            m_along(y / cell, column) += share(sum.along);
            m_across(y / cell, column) += share(sum.across);
            m_all(y / cell, column) += share(sum.all);
        }
    shareWithNeighbours();
}

void Orientations::shareWithNeighbours()
{
    for (cv::Mat_<float>* cells : {&m_along, &m_across, &m_all})
        if (!cells->empty())
            cv::blur(*cells, *cells, {3, 3});
}

double Orientations::coherence(cv::Point at) const
{
    const cv::Point2d way = direction(at);
    return std::hypot(way.x, way.y) / (energy(at) + 1);
}

} // namespace folvane
