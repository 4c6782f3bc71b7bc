#pragma once

#include <QByteArray>

namespace folvane {

/// An ICC profile of RGB with these H.273 code points (2: unspecified). Empty for sRGB and for what is
/// unknown.
QByteArray profileOfCodePoints(int primaries, int transfer);

} // namespace folvane
