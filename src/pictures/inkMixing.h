#pragma once

#include <QtGlobal>

namespace folvane {

/// How process inks without a profile look on paper: four bytes a pixel become three, RGB. `isInverted` as in InkSamples.
void mixInks(const uchar* inks, uchar* rgb, qsizetype pixels, bool isInverted);

} // namespace folvane
