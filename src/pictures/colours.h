#pragma once

#include "pictures/formats/InkSamples.h"

#include <QByteArray>
#include <QImage>

#include <stop_token>

// Colours of pictures, taken to sRGB. Qt's QColorSpace knows matrix profiles only; this knows all of ICC. A picture that is
// handed over for good is worked on in its own memory, where its depth allows that; after a stop it is of no use.

namespace folvane {

/// More than 8 bits a channel.
bool isDeep(QImage::Format format);

/// The picture in sRGB, with 8 bits a channel: Format_RGB888, Format_RGBA8888 or Format_Grayscale8. A profile
/// that is empty, broken, or not of the picture's colour model leaves the colours as they are.
QImage toSrgb(QImage image, const QByteArray& iccProfile, const std::stop_token& stop = {});

/// Format_RGB888. Without a usable profile, as common process inks look on paper.
QImage toSrgb(InkSamples cmyk, const QByteArray& iccProfile, const std::stop_token& stop = {});

} // namespace folvane
