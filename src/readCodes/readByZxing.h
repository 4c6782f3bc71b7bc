#pragma once

#include "readCodes/Symbol.h"
#include "readCodes/families.h"

namespace folvane {

/// How grey becomes black and white.
enum class Threshold { Local, Global };

/// Whether bars may also run from left to right.
enum class Turns { Yes, No };

/// What zxing-cpp reads, at any angle. It is never asked for DataBar: it ends the process on some plain pictures then.
/// Binary content is passed over.
Symbols readByZxing(const cv::Mat& grey, Families families, Threshold threshold = Threshold::Local,
                    Turns turns = Turns::Yes);

/// From now on at most one linear code is read in a picture or patch. Given the same one twice, the library ends the process.
void giveOneBarCode();

} // namespace folvane
