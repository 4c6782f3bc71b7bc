#pragma once

#include <opencv2/core.hpp>

namespace folvane {

/// A place of the picture set upright, its long side lying.
struct Patch {
    cv::Mat grey;
    cv::Matx23d toPicture; ///< where each of its pixels was taken from
};

/// Brought to a size that libraries read well (400 to 700 pixels, where the picture has them), with a rim around it for the
/// quiet zone.
Patch patchToRead(const cv::Mat& picture, const cv::RotatedRect& place);

/// The place alone, so many times as large.
Patch patchAtScale(const cv::Mat& picture, const cv::RotatedRect& place, double scale);

/// Of a place whose width goes across bars: along all of it and some way beyond its ends, but on few lines, from its upper to
/// its lower part.
Patch stripToRead(const cv::Mat& picture, const cv::RotatedRect& place);

/// At most 240 pixels long and without the outermost part: enough to judge its texture.
cv::Mat patchToJudge(const cv::Mat& picture, const cv::RotatedRect& place);

} // namespace folvane
