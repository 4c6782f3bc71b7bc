#pragma once

#include "readCodes/Symbol.h"

namespace folvane {

/// The codes in a grey picture of 8 bits.
Symbols findCodes(const cv::Mat& picture);

} // namespace folvane
