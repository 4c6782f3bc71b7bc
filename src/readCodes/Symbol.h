#pragma once

#include "records/CodeSymbology.h"

#include <opencv2/core.hpp>

#include <array>
#include <string>
#include <vector>

namespace folvane {

/// Four corners in pixels, one after the other around the code.
using Quad = std::array<cv::Point2f, 4>;

/// A code as one library read it.
struct Symbol {
    CodeSymbology symbology = CodeSymbology::Other;
    std::string text; ///< UTF-8
    Quad corners;
    int lines = 1; ///< on how many lines of the picture it was read; says something for linear codes only
};

using Symbols = std::vector<Symbol>;

} // namespace folvane
