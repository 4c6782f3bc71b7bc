#pragma once

#include <opencv2/core.hpp>

namespace folvane {

/// How brightness changes across a picture, summed over square cells: how much, in which direction, and how much all changes
/// of a place agree on one direction.
class Orientations {
public:
    /// Cells of so many pixels.
    Orientations(const cv::Mat& picture, int cell);

    cv::Size size() const { return m_along.size(); }

    /// Mean square of the change from pixel to pixel, in grey levels.
    double energy(cv::Point at) const { return double(m_all(at)); }
    /// From 0, any direction, to 1, all the same.
    double coherence(cv::Point at) const;
    /// As long as it is strong, at twice the angle of the change, so that black to white and white to black are one direction.
    cv::Point2d direction(cv::Point at) const { return {double(m_along(at)), double(m_across(at))}; }

private:
    /// Wide bars leave cells without a change.
    void shareWithNeighbours();

    cv::Mat_<float> m_along;  ///< change to the right by more than change downwards
    cv::Mat_<float> m_across; ///< the same for the diagonals
    cv::Mat_<float> m_all;
};

} // namespace folvane
