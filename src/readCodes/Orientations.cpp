#include "readCodes/Orientations.h"

#include <opencv2/imgproc.hpp>

#include <cmath>

namespace folvane {

namespace {

/// Wide bars leave cells without a change, which take part of their neighbours'.
void shareWithNeighbours(cv::Mat& cells)
{
    cv::blur(cells, cells, {3, 3});
}

} // namespace

Orientations::Orientations(const cv::Mat& picture, int cell) : m_cell(cell)
{
    const cv::Size size(picture.cols / cell, picture.rows / cell);
    m_along = cv::Mat_<float>::zeros(size);
    m_across = m_along.clone();
    m_all = m_along.clone();
    const float pixels = float(cell * cell);
    for (int y = 0; y < std::min(size.height * cell, picture.rows - 1); ++y) {
        const uchar* row = picture.ptr(y);
        const uchar* below = picture.ptr(y + 1);
        for (int column = 0; column < size.width; ++column) {
            int along = 0, across = 0, all = 0;
            const int end = std::min((column + 1) * cell, picture.cols - 1);
            for (int x = column * cell; x < end; ++x) {
                const int falling = below[x + 1] - row[x];
                const int rising = row[x + 1] - below[x];
                const int right = falling + rising;
                const int down = falling - rising;
                along += right * right - down * down;
                across += right * down;
                all += right * right + down * down;
            }
            const cv::Point at(column, y / cell);
            m_along(at) += float(along) / pixels;
            m_across(at) += 2 * float(across) / pixels;
            m_all(at) += float(all) / pixels;
        }
    }
    for (cv::Mat* cells : {static_cast<cv::Mat*>(&m_along), static_cast<cv::Mat*>(&m_across),
                           static_cast<cv::Mat*>(&m_all)})
        shareWithNeighbours(*cells);
}

double Orientations::coherence(cv::Point at) const
{
    const cv::Point2d way = direction(at);
    return std::hypot(way.x, way.y) / (energy(at) + 1);
}

} // namespace folvane
