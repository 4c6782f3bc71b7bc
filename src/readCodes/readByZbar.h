#pragma once

#include "readCodes/Symbol.h"
#include "readCodes/families.h"

namespace folvane {

/// What ZBar reads: QR codes, linear codes and DataBar, on every so many lines of the picture.
Symbols readByZbar(const cv::Mat& grey, Families families = zbarFamilies, int everyLines = 1);

} // namespace folvane
