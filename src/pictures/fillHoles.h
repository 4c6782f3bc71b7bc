#pragma once

#include "pictures/ImageSamples.h"

#include <QImage>

#include <stop_token>

// Pixels that nobody sees take the colour of what is seen around them, so that lossy coding and scaling carry no edge of
// theirs into it.

namespace folvane {

/// `holes` tells such pixels, one byte each, not 0 for them. A picture that is one hole stays. Of no use after a stop.
void fillHoles(ImageSamples& samples, const std::vector<uint8_t>& holes, const std::stop_token& stop);

/// The colours of a picture with transparency (Format_RGBA8888), opaque (Format_RGB888), to go with its mask: what is fully
/// transparent is a hole. A picture that is handed over for good keeps its memory. Null after a stop.
QImage withoutTransparency(QImage picture, const std::stop_token& stop);

} // namespace folvane
