#pragma once

#include <QImage>

namespace folvane::pdf {

/// The colours of a picture with transparency, opaque (Format_RGB888), to go with its mask. What is fully transparent
/// takes the colour of what is visible near it, so that lossy coding and scaling bring no dark edges in.
QImage withoutTransparency(const QImage& picture);

} // namespace folvane::pdf
