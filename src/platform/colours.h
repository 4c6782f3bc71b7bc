#pragma once

#include "platform/jpeg.h"

#include <QByteArray>
#include <QImage>

// Colours of pictures, taken to sRGB. Qt's QColorSpace knows matrix profiles only; this knows all of ICC.

namespace folvane {

/// The picture in sRGB, with 8 bits a channel: Format_RGB888, Format_RGBA8888 or Format_Grayscale8. A profile
/// that is empty, broken, or not of the picture's colour model leaves the colours as they are.
QImage toSrgb(const QImage& image, const QByteArray& iccProfile);

/// Format_RGB888. Without a usable profile, as common process inks look on paper.
QImage toSrgb(const InkSamples& cmyk, const QByteArray& iccProfile);

/// An ICC profile of RGB with these H.273 code points (2: unspecified). Empty for sRGB and for what is
/// unknown.
QByteArray profileOfCodePoints(int primaries, int transfer);

} // namespace folvane
