#pragma once

#include <QImage>

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <vector>

namespace folvane {

namespace detail {

/// Structural similarity of two windows of 8 by 8 grey pixels (Wang, Bovik, Sheikh and Simoncelli, 2004).
inline double windowSimilarity(const QImage& a, const QImage& b, int left, int top)
{
    constexpr int side = 8;
    constexpr double n = side * side, c1 = 6.5025, c2 = 58.5225; // (0.01 * 255)^2, (0.03 * 255)^2
    double sumA = 0, sumB = 0, sumAA = 0, sumBB = 0, sumAB = 0;
    for (int y = top; y < top + side; ++y) {
        const uchar* rowA = a.constScanLine(y);
        const uchar* rowB = b.constScanLine(y);
        for (int x = left; x < left + side; ++x) {
            const double p = rowA[x], q = rowB[x];
            sumA += p;
            sumB += q;
            sumAA += p * p;
            sumBB += q * q;
            sumAB += p * q;
        }
    }
    const double meanA = sumA / n, meanB = sumB / n;
    const double varianceA = sumAA / n - meanA * meanA, varianceB = sumBB / n - meanB * meanB;
    const double covariance = sumAB / n - meanA * meanB;
    return (2 * meanA * meanB + c1) * (2 * covariance + c2)
           / ((meanA * meanA + meanB * meanB + c1) * (varianceA + varianceB + c2));
}

/// Of the channels of two pictures of one size.
inline std::vector<int> differences(const QImage& first, const QImage& second)
{
    const QImage a = first.convertToFormat(QImage::Format_RGB888);
    const QImage b = second.convertToFormat(QImage::Format_RGB888);
    std::vector<int> all;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < 3 * a.width(); ++x)
            all.push_back(std::abs(a.constScanLine(y)[x] - b.constScanLine(y)[x]));
    return all;
}

} // namespace detail

/// Structural similarity of two pictures of one size, in grey: 1 for equal ones. 0 when sizes differ.
inline double similarity(const QImage& first, const QImage& second)
{
    if (first.size() != second.size() || first.width() < 8 || first.height() < 8)
        return 0;
    const QImage a = first.convertToFormat(QImage::Format_Grayscale8);
    const QImage b = second.convertToFormat(QImage::Format_Grayscale8);
    double sum = 0;
    int windows = 0;
    for (int top = 0; top + 8 <= a.height(); top += 4) {
        for (int left = 0; left + 8 <= a.width(); left += 4, ++windows)
            sum += detail::windowSimilarity(a, b, left, top);
    }
    return sum / windows;
}

/// The mean difference of the channels of two pictures of one size, 0 to 255; 255 when sizes differ.
inline double meanDifference(const QImage& first, const QImage& second)
{
    if (first.size() != second.size() || first.isNull())
        return 255;
    const std::vector<int> differences = detail::differences(first, second);
    return std::accumulate(differences.begin(), differences.end(), 0.0) / double(differences.size());
}

/// The largest difference of the mean colours of the cells of a grid over two pictures: it finds a picture that is
/// shifted, inverted or in other colours, whatever noise there is.
inline double largestCellDifference(const QImage& first, const QImage& second, int cells = 8)
{
    const auto averaged = [cells](const QImage& image) {
        return image.convertToFormat(QImage::Format_RGB32)
            .scaled(cells, cells, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    return std::ranges::max(detail::differences(averaged(first), averaged(second)));
}

} // namespace folvane
