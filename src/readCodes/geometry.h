#pragma once

#include "readCodes/Symbol.h"

namespace folvane {

cv::Rect2f boxAround(const std::vector<cv::Point2f>& points);
cv::Rect2f boxAround(const Quad& corners);
Quad cornersOf(const cv::Rect2f& box);
cv::Point2f middleOf(const Quad& corners);

/// Whether two codes are likely one: the middle of one lies in the box of the other, or hardly beside it.
bool isSameSpot(const Quad& a, const Quad& b);

/// Whether a point lies within a code, taken a little larger than it was seen.
bool liesIn(cv::Point2f point, const Quad& corners);
bool liesIn(cv::Point2f point, const cv::RotatedRect& rectangle);

/// How far corners reach along the width of a rectangle.
double lengthAlong(const cv::RotatedRect& rectangle, const Quad& corners);

/// What two rectangles share of what they cover together, from 0 to 1.
double overlapOf(const cv::RotatedRect& a, const cv::RotatedRect& b);

/// Symbols whose corners were seen in a copy, as they lie in the picture that the copy was made from.
Symbols carriedBack(Symbols symbols, const cv::Matx23d& toPicture);

/// From a copy that is so many times as large as its picture back to that.
cv::Matx23d fromScaled(double scale);

} // namespace folvane
